// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// zyltp: the command-line companion of the studio for tool path program files.
#include "ZYLTPCliCheck.h"
#include "ZYLTPCliCollisions.h"
#include "ZYLTPCliDemo.h"
#include "ZYLTPCliEdit.h"
#include "ZYLTPCliInfo.h"
#include "ZYLTPCliProcess.h"
#include "ZYLTPCliTables.h"

#include <QCoreApplication>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

void PrintUsage(const std::vector<std::unique_ptr<ZYLTPCliSubcommand>> &subcommands, FILE *stream)
{
    QString text = QStringLiteral("Usage: zyltp <subcommand> [options]\n\nSubcommands:\n");
    for (const auto &s : subcommands)
        text += QStringLiteral("  %1 %2\n").arg(s->GetName(), -11).arg(s->GetSummary());
    text += QStringLiteral("\n'zyltp <subcommand> --help' describes each one.\n"
                           "Exit codes: 0 success, 1 bad file or failed operation (for collisions: also when "
                           "collisions are found), 2 usage error.\n");
    std::fputs(text.toLocal8Bit().constData(), stream);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zyltp"));

    std::vector<std::unique_ptr<ZYLTPCliSubcommand>> subcommands;
    subcommands.push_back(std::make_unique<ZYLTPCliDemo>());
    subcommands.push_back(std::make_unique<ZYLTPCliInfo>());
    subcommands.push_back(std::make_unique<ZYLTPCliCheck>());
    subcommands.push_back(std::make_unique<ZYLTPCliCollisions>());
    subcommands.push_back(std::make_unique<ZYLTPCliEdit>());
    subcommands.push_back(std::make_unique<ZYLTPCliProcess>());
    subcommands.push_back(std::make_unique<ZYLTPCliTables>());

    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        PrintUsage(subcommands, stderr);
        return ZYLTPCliSubcommand::Usage;
    }
    const QString name = arguments.at(1);
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help")) {
        PrintUsage(subcommands, stdout);
        return ZYLTPCliSubcommand::Ok;
    }
    for (const auto &s : subcommands) {
        if (s->GetName() == name) {
            QStringList rest = arguments.mid(2);
            rest.prepend(arguments.front());
            return s->Run(rest);
        }
    }
    std::fprintf(stderr, "zyltp: unknown subcommand \"%s\"\n", qPrintable(name));
    PrintUsage(subcommands, stderr);
    return ZYLTPCliSubcommand::Usage;
}

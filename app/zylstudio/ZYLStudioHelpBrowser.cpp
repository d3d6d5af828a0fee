// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioHelpBrowser.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

#include <cstring>

namespace {

const char *const TourHeading = "A tour of zylstudio";
// Pictures are screenshots of the whole window: shown at most this wide, to read beside it.
constexpr double PictureWidth = 760.0;

// The guide's sections on the commands, by command class.
constexpr struct {
    const char *className;
    const char *heading;
} CommandSections[] = {
    {"ZYLTPEditCourseCmd", "Editing courses"},
    {"ZYLTPEditCourseLayingPointsCmd", "Laying points"},
    {"ZYLTPEditLinkingPointsCmd", "Links and linking points"},
    {"ZYLTPEditLinksCmd", "Links and linking points"},
    {"ZYLTPCollisionInspectorCmd", "Collision inspector"},
    {"ZYLTPContextualViewCmd", "Contextual view"},
    {"ZYLTPDetailedInfoCmd", "Detailed info"},
};

// Scales the pictures of `document` down to `PictureWidth`, keeping their proportions.
void FitPictures(QTextDocument *document)
{
    QTextCursor cursor(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            QTextImageFormat format = fragment.charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            const QImage image = document->resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
            if (image.isNull() || image.width() <= PictureWidth)
                continue;
            format.setWidth(PictureWidth);
            format.setHeight(PictureWidth * image.height() / image.width());
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
        }
    }
}

} // namespace

struct ZYLStudioHelpBrowser::Data {
    QTextBrowser *browser = nullptr;
    QString shownSection;
};

ZYLStudioHelpBrowser::ZYLStudioHelpBrowser(QWidget *parent) : QDialog(parent), d(std::make_unique<Data>())
{
    setObjectName(QStringLiteral("helpBrowser"));
    setWindowTitle(tr("zylstudio User Guide"));
    d->browser = new QTextBrowser(this);
    d->browser->setOpenExternalLinks(true);
    // Markdown by its suffix; the pictures' relative paths resolve beside it.
    d->browser->setSource(QUrl(QStringLiteral("qrc:/zylstudio/guide/README.md")));
    FitPictures(d->browser->document());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->browser);
    resize(900, 700);
}

ZYLStudioHelpBrowser::~ZYLStudioHelpBrowser() = default;

void ZYLStudioHelpBrowser::ShowSection(const QString &heading)
{
    show();
    raise();
    activateWindow();
    d->shownSection.clear();
    int top = 0;
    const QTextDocument *document = d->browser->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && block.text() == heading) {
            // Laid out once shown: the block's place is known now.
            top = int(document->documentLayout()->blockBoundingRect(block).top());
            d->shownSection = heading;
            break;
        }
    }
    d->browser->verticalScrollBar()->setValue(top);
}

QString ZYLStudioHelpBrowser::GetShownSection() const
{
    return d->shownSection;
}

QString ZYLStudioHelpBrowser::GetCommandSection(const char *className)
{
    for (const auto &entry : CommandSections)
        if (std::strcmp(entry.className, className) == 0)
            return QString::fromLatin1(entry.heading);
    return QString::fromLatin1(TourHeading);
}

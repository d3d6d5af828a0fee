// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPVisualizationSettings.h"

#include "ZYLTPVisualizationOptions.h"

#include <QLocale>
#include <QStringList>

#include <array>
#include <functional>
#include <vector>

using Options = ZYLTPVisualizationOptions;

namespace {

// How one persisted key maps onto the options: read the value, and write it back (false when
// the value is refused, leaving the options unchanged).
struct Field {
    QByteArray key;
    std::function<QVariant(const Options &)> read;
    std::function<bool(Options &, const QVariant &)> write;
};

Field BoolField(const char *key, bool (Options::*get)() const, void (Options::*set)(bool))
{
    return {key, [get](const Options &o) { return QVariant((o.*get)()); },
            [set](Options &o, const QVariant &v) {
                (o.*set)(v.toBool());
                return true;
            }};
}

template<class Enum>
Field EnumField(const char *key, Enum (Options::*get)() const, void (Options::*set)(Enum), QList<int> valid)
{
    return {key, [get](const Options &o) { return QVariant(int((o.*get)())); },
            [set, valid](Options &o, const QVariant &v) {
                if (!valid.contains(v.toInt()))
                    return false;
                (o.*set)(Enum(v.toInt()));
                return true;
            }};
}

Field LengthField(const char *key, double (Options::*get)() const, void (Options::*set)(double))
{
    return {key, [get](const Options &o) { return QVariant((o.*get)()); },
            [set](Options &o, const QVariant &v) {
                // The setters refuse lengths out of range with an exception.
                try {
                    (o.*set)(v.toDouble());
                    return true;
                } catch (const std::exception &) {
                    return false;
                }
            }};
}

constexpr std::array<const char *, Options::NumGraphicElements> ElementKeys = {
    "tipPoint",      "toolAxis",        "tangentVector",   "rollerAxis", "courseBand",
    "shortTow",      "towEdge",         "headProfile",     "layingTrajectory",
    "approachRetract", "rollInOut",     "linkLine",        "linkingPoint", "breakRange",
};

QString AttributesToText(const ZYLVisOptions &a)
{
    // Shortest round-trip text, so that a value read back compares equal to the one written.
    const auto number = [](double x) { return QString::number(x, 'g', QLocale::FloatingPointShortest); };
    return QStringList{a.GetColor().name(), number(a.GetLineThickness()), number(a.GetPointSize()),
                       number(a.GetTransparency()), QString::number(a.GetPriority()),
                       QString::number(a.IsDepthEnabled() ? 1 : 0)}
        .join(QLatin1Char(' '));
}

bool AttributesFromText(const QString &text, ZYLVisOptions *result)
{
    const QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (parts.size() != 6)
        return false;
    const QColor color(parts[0]);
    bool ok[5] = {};
    const double thickness = parts[1].toDouble(&ok[0]);
    const double pointSize = parts[2].toDouble(&ok[1]);
    const double transparency = parts[3].toDouble(&ok[2]);
    const int priority = parts[4].toInt(&ok[3]);
    const int depth = parts[5].toInt(&ok[4]);
    if (!color.isValid() || !(ok[0] && ok[1] && ok[2] && ok[3] && ok[4]) || (depth != 0 && depth != 1))
        return false;
    ZYLVisOptions options;
    // The setters refuse what a renderer cannot draw (negative sizes, transparency outside
    // [0, 1]); such text is as unreadable as a malformed one.
    try {
        options.SetColor(color);
        options.SetLineThickness(thickness);
        options.SetPointSize(pointSize);
        options.SetTransparency(transparency);
    } catch (const std::exception &) {
        return false;
    }
    options.SetPriority(priority);
    options.SetDepthEnabled(depth == 1);
    *result = options;
    return true;
}

Field AttributesField(Options::GraphicElement element)
{
    return {QByteArray("attributes/") + ElementKeys[size_t(element)],
            [element](const Options &o) { return QVariant(AttributesToText(o.GetGraphicAttributes(element))); },
            [element](Options &o, const QVariant &v) {
                ZYLVisOptions attributes;
                if (!AttributesFromText(v.toString(), &attributes))
                    return false;
                o.SetGraphicAttributes(element, attributes);
                return true;
            }};
}

const std::vector<Field> &Fields()
{
    static const std::vector<Field> fields = [] {
        const QList<int> vectors{0, 1, 2, 3, 4, 5, 6, 7};
        const QList<int> twoBits{0, 1, 2, 3};
        std::vector<Field> f{
            BoolField("courseEnabled", &Options::IsCourseEnabled, &Options::SetCourseEnabled),
            BoolField("approachRetractEnabled", &Options::IsApproachRetractEnabled,
                      &Options::SetApproachRetractEnabled),
            BoolField("rollInOutEnabled", &Options::IsRollInOutEnabled, &Options::SetRollInOutEnabled),
            BoolField("tipPointEnabled", &Options::IsTipPointEnabled, &Options::SetTipPointEnabled),
            BoolField("layingTrajectoryEnabled", &Options::IsLayingTrajectoryEnabled,
                      &Options::SetLayingTrajectoryEnabled),
            BoolField("linkingTrajectoriesEnabled", &Options::GetLinkingTrajectoriesEnabled,
                      &Options::SetLinkingTrajectoriesEnabled),
            BoolField("linkingPointsEnabled", &Options::IsLinkingPointsEnabled, &Options::SetLinkingPointsEnabled),
            BoolField("breakRangeEnabled", &Options::IsBreakRangeEnabled, &Options::SetBreakRangeEnabled),
            EnumField("layingVectors", &Options::GetLayingVectorsToDisplay, &Options::SetLayingVectorsToDisplay,
                      vectors),
            EnumField("linkingVectors", &Options::GetLinkingVectorsToDisplay, &Options::SetLinkingVectorsToDisplay,
                      vectors),
            EnumField("linkEndPointsVectors", &Options::GetLinkEndPointsVectorsToDisplay,
                      &Options::SetLinkEndPointsVectorsToDisplay, vectors),
            EnumField("headProfiles", &Options::GetTowHeadProfileDisplay, &Options::SetTowHeadProfileDisplay,
                      twoBits),
            EnumField("towEdges", &Options::GetTowEdgeDisplay, &Options::SetTowEdgeDisplay, twoBits),
            EnumField("shortTows", &Options::GetShortTowDisplay, &Options::SetShortTowDisplay,
                      {Options::NoTowFill, Options::ShortTowsOnly, Options::AllTows,
                       Options::AllTowsShortHighlighted}),
            LengthField("vectorLength", &Options::GetVectorLength, &Options::SetVectorLength),
            LengthField("towWidth", &Options::GetTowWidth, &Options::SetTowWidth),
            LengthField("minimumTowLength", &Options::GetMinimumTowLength, &Options::SetMinimumTowLength),
        };
        for (int element = 0; element < Options::NumGraphicElements; ++element)
            f.push_back(AttributesField(Options::GraphicElement(element)));
        return f;
    }();
    return fields;
}

} // namespace

struct ZYLTPVisualizationSettings::Data {
    Options options;
};

ZYLTPVisualizationSettings *ZYLTPVisualizationSettings::GetInstance()
{
    static ZYLTPVisualizationSettings instance;
    return &instance;
}

ZYLTPVisualizationSettings::ZYLTPVisualizationSettings()
    : ZYLSysSettings("ZYLToolPathDisplay")
    , d(std::make_unique<Data>())
{
    // Representations are built from the first call on; they need the user's options then,
    // not after the event loop has run.
    Reload();
}

ZYLTPVisualizationSettings::~ZYLTPVisualizationSettings() = default;

void ZYLTPVisualizationSettings::GetVisualizationOptions(ZYLTPVisualizationOptions *options) const
{
    if (options)
        *options = d->options;
}

void ZYLTPVisualizationSettings::SetVisualizationOptions(const ZYLTPVisualizationOptions &options)
{
    if (options == d->options)
        return;
    const Options defaults;
    for (const Field &field : Fields()) {
        const QVariant value = field.read(options);
        if (value == field.read(d->options))
            continue;
        // Defaults are not written, so that a later change of a default reaches every user
        // who never chose that value.
        UpdateSetting(field.key, value == field.read(defaults) ? QVariant() : value);
    }
    d->options = options;
    emit OptionsChanged();
}

void ZYLTPVisualizationSettings::Reload()
{
    Options options;
    for (const Field &field : Fields()) {
        const QVariant fallback = field.read(options);
        const QVariant stored = GetValue(field.key, fallback);
        if (stored != fallback)
            field.write(options, stored);
    }
    if (options == d->options)
        return;
    d->options = options;
    emit OptionsChanged();
}

void ZYLTPVisualizationSettings::RevertToDefaults()
{
    const bool changed = d->options != Options();
    d->options = Options();
    ZYLSysSettings::RevertToDefaults();
    if (changed)
        emit OptionsChanged();
}

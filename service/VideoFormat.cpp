#include "service/VideoFormat.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tessary::VideoFormat {
namespace {

struct Format
{
    QString name;
    QString code;
};

const std::array<Format, 6>& formats()
{
    static const std::array<Format, 6> table{{
        {QStringLiteral("2D"), QStringLiteral("2D")},
        {QStringLiteral("Stereoscopic Left/Right"), QStringLiteral("SBS")},
        {QStringLiteral("Stereoscopic Top/Bottom"), QStringLiteral("TB")},
        {QStringLiteral("Spatial (MV-HEVC)"), QStringLiteral("Spatial")},
        {QStringLiteral("Apple Immersive Video (.aivu)"), QStringLiteral("AIV")},
        {QStringLiteral("Separate"), QStringLiteral("Separate")},
    }};
    return table;
}

constexpr std::size_t flat = 0;
constexpr std::size_t sideBySide = 1;
constexpr std::size_t immersiveVideo = 4;
constexpr std::size_t separateEyes = 5;
constexpr qint64 perspectiveWhenUnreadable = 180;

} // namespace

const QStringList& names()
{
    static const QStringList list = [] {
        QStringList all;
        for (const Format& format : formats()) {
            all.append(format.name);
        }
        return all;
    }();
    return list;
}

const QStringList& perspectives()
{
    static const QStringList list{QStringLiteral("60"), QStringLiteral("180"), QStringLiteral("360")};
    return list;
}

const QString& separate()
{
    return formats()[separateEyes].name;
}

const QString& immersive()
{
    return formats()[immersiveVideo].name;
}

const QString& immersivePerspective()
{
    return perspectives().at(1);
}

const QString& defaultName()
{
    return formats()[sideBySide].name;
}

const QString& defaultPerspective()
{
    return perspectives().at(0);
}

QString fileFormatCode(const QString& name)
{
    const auto found = std::find_if(formats().begin(), formats().end(),
                                    [&name](const Format& format) { return format.name == name; });
    return found == formats().end() ? formats()[sideBySide].code : found->code;
}

bool is3D(const QString& name)
{
    return name != formats()[flat].name;
}

qint64 perspectiveNumber(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const char* first = bytes.cbegin();
    // from_chars knows no plus sign; "+-5" must stay unreadable.
    if (bytes.startsWith('+') && !bytes.startsWith("+-")) {
        ++first;
    }
    qint64 number{};
    const auto [end, error] = std::from_chars(first, bytes.cend(), number);
    return error == std::errc{} && end == bytes.cend() ? number : perspectiveWhenUnreadable;
}

} // namespace tessary::VideoFormat

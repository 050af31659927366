#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace tessary {

/// The contrast of two opaque colours, 1 to 21, as WCAG 2.1 defines it ("contrast ratio").
inline double contrast(const QColor& one, const QColor& other)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [linear](const QColor& color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace tessary

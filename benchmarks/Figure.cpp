#include "benchmarks/Figure.h"

#include <algorithm>
#include <cmath>

namespace tessary::benchmarks {

double quantile(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    const double place = fraction * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(std::floor(place));
    const std::size_t above = std::min(below + 1, values.size() - 1);
    return std::lerp(values.at(below), values.at(above), place - std::floor(place));
}

QString written(double value, int digits)
{
    return QString::number(value, 'f', digits);
}

} // namespace tessary::benchmarks

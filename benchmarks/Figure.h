#pragma once

#include <QString>

#include <vector>

namespace tessary::benchmarks {

/// One row of the table: what was measured, what it is held against, and what it should be.
struct Figure
{
    QString name;
    QString measured;
    QString against;
    QString result; ///< a ratio, a share, or what was measured once more
    QString aim;
    bool met;
};

/// Each takes its measurements and says so on standard error; throws std::runtime_error when one cannot be
/// taken. Main thread only, below a QGuiApplication.
[[nodiscard]] std::vector<Figure> measureUploads();
[[nodiscard]] std::vector<Figure> measureIdleness();
[[nodiscard]] std::vector<Figure> measureCancelling();
[[nodiscard]] std::vector<Figure> measureEventLoop();
[[nodiscard]] std::vector<Figure> measureStart();
[[nodiscard]] std::vector<Figure> measureLog();
[[nodiscard]] std::vector<Figure> measureWaits();
[[nodiscard]] std::vector<Figure> measureFrames();
[[nodiscard]] std::vector<Figure> measureGrowth();
[[nodiscard]] std::vector<Figure> measureTransfers();

/// The value below which the given fraction of the values lies; 0.5 is the median. There must be a value.
[[nodiscard]] double quantile(std::vector<double> values, double fraction);

/// Fixed notation with that many digits after the point.
[[nodiscard]] QString written(double value, int digits);

} // namespace tessary::benchmarks

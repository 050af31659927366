#include "testkit/ProgramFixture.h"
#include "tests/support/Contrast.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

using namespace tessary;

namespace {

/// What is seen of a colour over an opaque ground.
QColor over(const QColor& color, double opacity, const QColor& ground)
{
    const double share = color.alphaF() * opacity;
    const auto part = [share](double ours, double below) {
        return float(ours * share + below * (1 - share));
    };
    return QColor::fromRgbF(part(color.redF(), ground.redF()), part(color.greenF(), ground.greenF()),
                            part(color.blueF(), ground.blueF()));
}

constexpr double text = 4.5;
constexpr double graphics = 3;
constexpr double asGiven = 3.6; // white on the blue of the platform, which stays what it is

} // namespace

/// Everything that carries a meaning can be told from what it lies on, in every palette.
class ContrastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reaches_data();
    void reaches();
    void groundsDiffer_data();
    void groundsDiffer();

private:
    void usePalette(bool dark);

    [[nodiscard]] QColor color(const QByteArray& name) const
    {
        return m_look->property(name.constData()).value<QColor>();
    }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
    std::unique_ptr<QObject> m_holder;
    QObject* m_look = nullptr;
};

void ContrastTest::usePalette(bool dark)
{
    QPalette palette(dark ? QColor(0x32, 0x32, 0x32) : QColor(0xec, 0xec, 0xec));
    palette.setColor(QPalette::Highlight, dark ? QColor(0x0a, 0x84, 0xff) : QColor(0x00, 0x7a, 0xff));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QGuiApplication::setPalette(palette);
    if (!m_fixture) {
        m_fixture = std::make_unique<testkit::ProgramFixture>();
        QQmlComponent holder(qmlEngine(&m_fixture->window()));
        holder.setData("import QtQml\nimport Tessary.Look\nQtObject { property QtObject look: Look }", {});
        m_holder.reset(holder.create());
        m_look = m_holder->property("look").value<QObject*>();
    }
    QTRY_COMPARE(m_look->property("dark").toBool(), dark);
}

void ContrastTest::reaches_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QByteArray>("ink");
    QTest::addColumn<double>("opacity");
    QTest::addColumn<QByteArray>("ground");
    QTest::addColumn<double>("least");

    const struct
    {
        const char* ink;
        double opacity;
        const char* ground;
        double least;
    } rows[]{
        {"labelColor", 1, "windowBackgroundColor", text},
        {"labelColor", 1, "controlBackgroundColor", text},
        {"labelColor", 1, "textBackgroundColor", text},
        {"secondaryLabelColor", 1, "windowBackgroundColor", text},
        {"secondaryLabelColor", 1, "controlBackgroundColor", text},
        {"secondaryLabelColor", 1, "textBackgroundColor", text},
        {"secondaryLabelColor", 0.8, "controlBackgroundColor", text}, // a workspace that is still loading
        {"placeholderTextColor", 1, "textBackgroundColor", text},
        {"grayTextColor", 1, "windowBackgroundColor", text},
        {"alternateSelectedControlTextColor", 1, "systemGrayColor", text},
        {"alternateSelectedControlTextColor", 1, "systemBlueColor", asGiven},
        {"accentTextColor", 1, "accentColor", asGiven},
        {"outlineColor", 1, "windowBackgroundColor", graphics},
        {"outlineColor", 1, "controlBackgroundColor", graphics},
        {"outlineColor", 1, "textBackgroundColor", graphics},
        {"tertiaryLabelColor", 1, "textBackgroundColor", graphics},
        {"secondaryLabelColor", 0.8, "controlBackgroundColor", graphics}, // around the calm dot
        {"labelColor", 0.52, "controlBackgroundColor", graphics},         // the scroll bar's thumb
        {"labelColor", 0.52, "windowBackgroundColor", graphics},
        {"systemYellowColor", 1, "windowBackgroundColor", graphics},
        {"systemRedColor", 1, "controlBackgroundColor", graphics},
        {"systemBlueColor", 1, "controlBackgroundColor", graphics},
        {"accentColor", 1, "windowBackgroundColor", graphics}, // the focus ring
        {"accentColor", 1, "controlBackgroundColor", graphics},
    };

    for (const bool dark : {false, true}) {
        for (const auto& row : rows) {
            QTest::addRow("%s at %g on %s, %s", row.ink, row.opacity, row.ground, dark ? "dark" : "light")
                << dark << QByteArray(row.ink) << row.opacity << QByteArray(row.ground) << row.least;
        }
    }
}

void ContrastTest::reaches()
{
    QFETCH(bool, dark);
    QFETCH(QByteArray, ink);
    QFETCH(double, opacity);
    QFETCH(QByteArray, ground);
    QFETCH(double, least);
    usePalette(dark);
    const QColor below = color(ground);
    QVERIFY(below.isValid() && below.alpha() == 255);
    const double reached = contrast(over(color(ink), opacity, below), below);
    QVERIFY2(reached >= least, qPrintable(QString::number(reached)));
}

void ContrastTest::groundsDiffer_data()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

/// Log, fields and zones are no part of the card that they lie on.
void ContrastTest::groundsDiffer()
{
    QFETCH(bool, dark);
    usePalette(dark);
    QVERIFY(contrast(color("textBackgroundColor"), color("controlBackgroundColor")) > 1.05);
    QVERIFY(contrast(color("windowBackgroundColor"), color("controlBackgroundColor")) > 1.15);
}

QTEST_MAIN(ContrastTest)

#include "tst_contrast.moc"

#include "testkit/ProgramFixture.h"
#include "tests/support/Contrast.h"
#include "tests/support/FakeService.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

using namespace tessary;

namespace {

constexpr double text = 4.5;
constexpr double strongText = 7;
constexpr double graphics = 3;
constexpr double asGiven = 3.6; // white on the blue of the platform, which stays what it is
constexpr double unavailable = 2.4;
constexpr double any = 1;

} // namespace

/// Everything that carries a meaning can be told from what it lies on, in every palette.
class ContrastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void reaches_data();
    void reaches();

private:
    void usePalette(bool dark, bool highContrast);

    /// What is seen of layers such as "windowBackground black*0.3", the last on top, over that ground.
    [[nodiscard]] QColor seen(const QByteArray& layers, QColor ground = {}) const;

    QDBusConnection m_desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    std::unique_ptr<testing::FakeService> m_portal;
    std::unique_ptr<testkit::ProgramFixture> m_fixture;
    std::unique_ptr<QObject> m_holder;
    QObject* m_look = nullptr;
};

void ContrastTest::initTestCase()
{
    m_portal = std::make_unique<testing::FakeService>(
        m_desktop, QStringList("org.freedesktop.portal.Desktop"), "not what was asked for");
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    // What comes in before the first turn of the loop could be overtaken by what comes in with it.
    QVERIFY(testing::settled(QDBusConnection::sessionBus(), m_desktop));
    QQmlComponent holder(qmlEngine(&m_fixture->window()));
    holder.setData("import QtQml\nimport Tessary.Look\nQtObject { property QtObject look: Look }", {});
    m_holder.reset(holder.create());
    m_look = m_holder->property("look").value<QObject*>();
}

void ContrastTest::usePalette(bool dark, bool highContrast)
{
    QPalette palette(dark ? QColor(0x32, 0x32, 0x32) : QColor(0xec, 0xec, 0xec));
    palette.setColor(QPalette::Highlight, dark ? QColor(0x0a, 0x84, 0xff) : QColor(0x00, 0x7a, 0xff));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QGuiApplication::setPalette(palette);
    m_portal->announce("org.freedesktop.appearance", "contrast", highContrast ? 1U : 0U);
    QTRY_VERIFY(m_look->property("dark").toBool() == dark &&
                m_look->property("highContrast").toBool() == highContrast);
}

QColor ContrastTest::seen(const QByteArray& layers, QColor ground) const
{
    for (const QByteArray& layer : layers.split(' ')) {
        const QByteArrayList parts = layer.split('*');
        QVariant value = m_look->property(parts[0]);
        value = value.isValid() ? value : m_look->property(parts[0] + "Color");
        const auto color = value.value<QColor>();
        if (!color.isValid()) {
            qFatal("no colour is named %s", parts[0].constData());
        }
        const double share = color.alphaF() * (parts.size() > 1 ? parts[1].toDouble() : 1);
        const auto mixed = [share](double ours, double below) {
            return float(ours * share + below * (1 - share));
        };
        ground = QColor::fromRgbF(mixed(color.redF(), ground.redF()), mixed(color.greenF(), ground.greenF()),
                                  mixed(color.blueF(), ground.blueF()));
    }
    return ground;
}

void ContrastTest::reaches_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<bool>("highContrast");
    QTest::addColumn<QByteArray>("ink");
    QTest::addColumn<QByteArray>("ground");
    QTest::addColumn<double>("least");

    const QByteArrayList card{"controlBackground"};
    const QByteArrayList window{"windowBackground"};
    const QByteArrayList plate{"textBackground"};
    const QByteArrayList grounds = card + window + plate;
    const QByteArrayList notice{"windowBackground black*0.3 notice*0.9",
                                "controlBackground black*0.3 notice*0.9"};

    const struct
    {
        QByteArrayList inks; // of "this|that" the one that stands out more
        QByteArrayList grounds;
        double least;
        double strongLeast; // with high contrast
    } rows[]{
        {{"label", "secondaryLabel"}, grounds, text, strongText},
        {{"label"}, {"selectedTextBackground"}, text, strongText},
        {{"secondaryLabel*0.8"}, card, text, strongText}, // a workspace that is still loading
        {{"placeholderText"}, plate, text, strongText},
        {{"grayText"}, {"windowBackground label*0.08"}, text, strongText},
        {{"alternateSelectedControlText"}, {"systemGray"}, text, strongText},
        {{"alternateSelectedControlText"}, {"systemBlue"}, asGiven, strongText},
        {{"accentText"}, {"accent"}, asGiven, strongText},
        {{"accentText"}, {"windowBackground disabledAccent"}, unavailable, strongText},
        {{"white"}, notice, text, strongText},
        {{"systemGreen"}, notice, graphics, graphics}, // the badge, and the tick on it
        {{"white"}, {"systemGreen"}, any, graphics},   // white and green of the platform stay what they are
        {{"outline"}, grounds, graphics, graphics},
        {{"separator", "plainOutline"}, grounds, any, graphics},
        {{"separator"}, {"windowBackground black*0.3", "controlBackground black*0.3"}, any, graphics},
        {{"systemBlue"}, {"controlBackground track"}, graphics, graphics},
        {{"plainOutline"}, {"controlBackground track"}, any, graphics},
        {{"tertiaryLabel"}, plate, graphics, graphics},
        {{"systemBlue*0.8", "systemGreen*0.8|greenEdge*0.8"}, card, graphics, graphics}, // the calm dot
        {{"label*0.52"}, grounds, graphics, graphics},             // the scroll bar's thumb
        {{"systemYellow|yellowEdge"}, window, graphics, graphics}, // the warning, and its mark
        {{"systemYellow"}, {"windowBackground yellowEdge"}, graphics, graphics},
        {{"systemRed"}, card, graphics, strongText},
        {{"systemBlue"}, card + plate, graphics, graphics},
        {{"accent"}, grounds, graphics, graphics}, // the focus ring
        {plate, card, 1.05, any}, // log, fields and zones are no part of the card that they lie on
        {window, card, 1.15, any},
    };

    for (const bool dark : {false, true}) {
        for (const bool highContrast : {false, true}) {
            for (const auto& row : rows) {
                for (const QByteArray& ink : row.inks) {
                    for (const QByteArray& ground : row.grounds) {
                        QTest::addRow("%s on %s, %s%s", ink.constData(), ground.constData(),
                                      dark ? "dark" : "light", highContrast ? ", high contrast" : "")
                            << dark << highContrast << ink << ground
                            << (highContrast ? row.strongLeast : row.least);
                    }
                }
            }
        }
    }
}

void ContrastTest::reaches()
{
    QFETCH(bool, dark);
    QFETCH(bool, highContrast);
    QFETCH(QByteArray, ink);
    QFETCH(QByteArray, ground);
    QFETCH(double, least);
    usePalette(dark, highContrast);
    const QColor below = seen(ground);
    double reached = 0;
    for (const QByteArray& one : ink.split('|')) {
        reached = std::max(reached, contrast(seen(one, below), below));
    }
    QVERIFY2(reached >= least, qPrintable(QString::number(reached)));
}

QTEST_MAIN(ContrastTest)

#include "tst_contrast.moc"

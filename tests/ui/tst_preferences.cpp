#include "testkit/ProgramFixture.h"
#include "tests/support/Contrast.h"
#include "tests/support/FakeService.h"
#include "ui/look/DesktopTheme.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace tessary;

class PreferencesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup()
    {
        m_fixture.reset();
        m_portal.reset();
    }

    void colorsFollowTheDesktop();
    void highContrastDrawsEdges();
    void nothingMovesWithoutAnimations();
    void nothingMovesUnseen();
    void textGrowsWithTheDesktops();
    void fontFollowsTheDesktops_data();
    void fontFollowsTheDesktops();
    void fontsAreOfTheirKind();

private:
    /// The desktop changes a setting; waits until the program has noticed it.
    void change(const QString& group, const QString& key, const QVariant& value);

    /// Whether they step: the dot, and what goes round on the button.
    [[nodiscard]] static QList<bool> stepping(const QQuickWindow& window)
    {
        QList<bool> found;
        for (const QObject* timer : window.findChildren<QObject*>()) {
            if (timer->objectName() == "pulsing" || timer->objectName() == "turning") {
                found.append(timer->property("running").toBool());
            }
        }
        return found;
    }

    /// The engine's object of that type of the look's module.
    [[nodiscard]] QObject& look(const QByteArray& type = "Look") const
    {
        QQmlComponent component(qmlEngine(m_fixture->item("nameField")));
        component.setData(
            "import QtQml; import Tessary.Look; QtObject { property QtObject it: " + type + " }", {});
        const std::unique_ptr<QObject> holder(component.create());
        return *holder->property("it").value<QObject*>();
    }

    [[nodiscard]] FileUploaderState& state() const { return m_fixture->state(); }

    QDBusConnection m_desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    std::unique_ptr<testing::FakeService> m_portal;
    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void PreferencesTest::init()
{
    m_portal = std::make_unique<testing::FakeService>(
        m_desktop, QStringList("org.freedesktop.portal.Desktop"), "not what was asked for");
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    QVERIFY(m_fixture->showUploader());
}

void PreferencesTest::colorsFollowTheDesktop()
{
    const QPalette before = QGuiApplication::palette();
    const auto header = [this] { return m_fixture->window().grabWindow().pixelColor(450, 4); };
    QGuiApplication::setPalette(QPalette(Qt::white));
    QTRY_COMPARE(header(), QColor(Qt::white));
    QGuiApplication::setPalette(QPalette(Qt::black));
    QTRY_COMPARE(header(), QColor(0x1e, 0x1e, 0x1e));
    QGuiApplication::setPalette(before);
}

void PreferencesTest::change(const QString& group, const QString& key, const QVariant& value)
{
    QSignalSpy noticed(&look("DesktopTheme"), SIGNAL(animationsChanged()));
    m_portal->announce(group, key, value);
    QTRY_COMPARE(noticed.count(), 1);
}

/// A line goes around what only its tone or its shadow tells from its ground.
void PreferencesTest::highContrastDrawsEdges()
{
    const QPalette before = QGuiApplication::palette();
    QGuiApplication::setPalette(QPalette(Qt::black));
    change("org.freedesktop.appearance", "contrast", 1U);
    state().setSelectedFile(QUrl::fromLocalFile("/a.mov"));
    const auto underWay = m_fixture->application().uploadActivity()->beginRegistration();
    for (const char* name : {"filePicker", "formCard", "logCard", "sheet"}) {
        if (qstrcmp(name, "sheet") == 0) {
            QVERIFY(!m_fixture->window().close());
        }
        QVERIFY(m_fixture->driver().ready(name));
        const QQuickItem* item = m_fixture->item(name);
        const QPointF edge = item->mapToScene({0, item->height() / 2});
        const QImage picture = m_fixture->window().grabWindow();
        const auto at = [&](int step) { return picture.pixelColor(edge.toPoint() + QPoint(step, 0)); };
        double reached = 0;
        for (const int line : {-1, 0}) {
            reached = std::max({reached, contrast(at(line), at(-4)), contrast(at(line), at(4))});
        }
        QVERIFY2(reached >= 3, qPrintable(QString("%1: %2").arg(name).arg(reached)));
    }
    QGuiApplication::setPalette(before);
}

void PreferencesTest::nothingMovesWithoutAnimations()
{
    change("org.gnome.desktop.interface", "enable-animations", false);
    QVERIFY(m_fixture->click("detailsButton"));
    QVERIFY(m_fixture->item("nameField") == nullptr && m_fixture->item("logText") == nullptr); // at once
    QVERIFY(m_fixture->item("filePicker") != nullptr && m_fixture->item("uploadButton") != nullptr);
    QCOMPARE(m_fixture->driver().textOf("detailsButton"), "Show details");
    QVERIFY(m_fixture->click("detailsButton"));
    QCOMPARE(m_fixture->item("uploadButton")->mapToScene({0, 0}).x(),
             m_fixture->item("nameField")->mapToScene({0, 0}).x());
    state().enter(UploadState::Requesting);
    QCOMPARE(stepping(m_fixture->window()), QList<bool>({false, false}));
}

/// In a window that stays when it is hidden.
void PreferencesTest::nothingMovesUnseen()
{
    QQmlComponent component(qmlEngine(m_fixture->item("nameField")));
    component.setData("import QtQuick; import Tessary; import Tessary.Look\n"
                      "Window { visible: true; StateDot { busy: true } ActivityIndicator {} }",
                      {});
    const std::unique_ptr<QObject> created(component.create());
    auto* window = qobject_cast<QQuickWindow*>(created.get());
    QVERIFY(window != nullptr);
    for (const bool seen : {true, false, true}) {
        window->setVisible(seen);
        QTRY_COMPARE(stepping(*window), QList<bool>({seen, seen}));
    }
}

void PreferencesTest::fontFollowsTheDesktops_data()
{
    QTest::addColumn<QVariant>("description");
    QTest::addColumn<QString>("family"); // and size, twice as large; that of before when empty
    QTest::newRow("plain") << QVariant("Cantarell 11") << "Cantarell 22pt";
    QTest::newRow("style") << QVariant("DejaVu Sans Semi-Bold Italic 10.5") << "DejaVu Sans 21pt";
    QTest::newRow("family like a style") << QVariant("Bold 12") << "Bold 24pt";
    QTest::newRow("comma") << QVariant("Noto Sans, 10") << "Noto Sans 20pt";
    QTest::newRow("pixels, one at least") << QVariant("Noto Sans 0.4px") << "Noto Sans 2px";
    QTest::newRow("no size") << QVariant("Cantarell") << "";
    QTest::newRow("size of nothing") << QVariant("Cantarell 0") << "";
    QTest::newRow("no font") << QVariant(7) << "";
}

void PreferencesTest::fontFollowsTheDesktops()
{
    QFETCH(QVariant, description);
    QFETCH(QString, family);
    const auto shown = [this] {
        const auto font = m_fixture->item("nameField")->property("font").value<QFont>();
        const bool pixels = font.pixelSize() > 0;
        return QString("%1 %2%3")
            .arg(font.family())
            .arg(pixels ? font.pixelSize() : font.pointSizeF())
            .arg(pixels ? "px" : "pt");
    };
    change("org.gnome.desktop.interface", "text-scaling-factor", 2.0);
    const QString before = shown();
    change("org.gnome.desktop.interface", "font-name", description);
    QCOMPARE(shown(), family.isEmpty() ? before : family);
}

void PreferencesTest::fontsAreOfTheirKind()
{
    const auto font = [this](const char* name) { return look().property(name).value<QFont>(); };
    QCOMPARE(font("headline").weight(), QFont::Bold);
    QCOMPARE(font("heading").weight(), QFont::DemiBold);
    const QFontMetrics monospaced(font("monospacedCaption")); // not every such font says that it is one
    QCOMPARE(monospaced.horizontalAdvance(u'i'), monospaced.horizontalAdvance(u'W'));
    const QString family = QFontDatabase::families().constLast();
    const QFont any("Any");
    QCOMPARE(look::DesktopTheme::inFirstOf({"none", family}, any).families(), QStringList(family));
    QCOMPARE(look::DesktopTheme::inFirstOf({"none"}, any), any);
}

void PreferencesTest::textGrowsWithTheDesktops()
{
    const auto size = [this] {
        return m_fixture->item("nameField")->property("font").value<QFont>().pointSizeF();
    };
    const double before = size();
    change("org.gnome.desktop.interface", "text-scaling-factor", 2.0);
    const bool scaledAlready = QGuiApplication::platformName() == "xcb"; // by the screen's resolution
    QCOMPARE(size(), (scaledAlready ? 1 : 2) * before);
    auto underWay = m_fixture->application().uploadActivity()->beginRegistration();
    QVERIFY(!m_fixture->window().close());
    for (const char* name : {"confirmButton", "declineButton"}) {
        QVERIFY(m_fixture->driver().ready(name));
        QVERIFY(m_fixture->item(name)->width() >= m_fixture->item(name)->implicitWidth());
    }
}

QTEST_MAIN(PreferencesTest)

#include "tst_preferences.moc"

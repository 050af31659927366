#include "testkit/ProgramFixture.h"
#include "tests/support/FakeService.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace tessary;

namespace {

using Scene = std::function<bool(testkit::ProgramFixture&, const QString& name)>;

QRectF placeOf(const QQuickItem& item)
{
    return item.mapRectToScene(QRectF(QPointF(), item.size()));
}

void collect(QQuickItem& item, double opacity, QRectF view, QList<std::pair<QQuickItem*, QRectF>>& found)
{
    opacity *= item.opacity();
    if (!item.isVisible() || opacity < 0.01) {
        return;
    }
    if (item.clip()) {
        view &= placeOf(item);
    }
    const bool writes = item.property("truncated").isValid();
    const bool draws = writes || item.property("turn").isValid() || item.objectName() == "progressBar";
    if (draws && !(writes && item.property("text").toString().isEmpty())) {
        found.append({&item, view});
    }
    for (QQuickItem* child : item.childItems()) {
        collect(*child, opacity, view, found);
    }
}

QString described(const QQuickItem& item)
{
    const QRectF place = placeOf(item);
    return QString("%1 \"%2\" at %3, %4 of %5 x %6, content %7 x %8")
        .arg(item.metaObject()->className(), item.property("text").toString().left(40))
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height())
        .arg(item.property("contentWidth").toDouble())
        .arg(item.property("contentHeight").toDouble());
}

/// The screen with the name wherever there is one.
void fill(testkit::ProgramFixture& fixture, const QString& name)
{
    Workspace workspace;
    workspace.workspaceName = name;
    fixture.session().setWorkspaceData(workspace);
    FileUploaderState& state = fixture.state();
    state.setVideoName(name);
    state.setStatusMessage("Selected: " + name);
    state.processOutput(name + '\n');
}

} // namespace

/// Whatever the names, the window's size and the text's: all that is there has its room.
class RoomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingHasItsRoom_data();
    void everythingHasItsRoom();

private:
    /// Whether the item lies in the view, up and down only where nothing scrolls, and holds what it shows; a
    /// text that is cut off is brought up by the pointer.
    [[nodiscard]] bool fits(const QQuickItem& item, const QRectF& view) const;

    [[nodiscard]] bool explained(const QQuickItem& text) const;

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void RoomTest::everythingHasItsRoom_data()
{
    QTest::addColumn<Scene>("scene");
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("textScale");

    const std::pair<const char*, Scene> scenes[]{
        {"uploading",
         [](testkit::ProgramFixture& fixture, const QString& name) {
             const bool shown = fixture.showUploader();
             fixture.state().setSelectedFile(QUrl::fromLocalFile('/' + name + '.' + name));
             fixture.state().enter(UploadState::Requesting);
             fill(fixture, name);
             return shown;
         }},
        {"two files, failed",
         [](testkit::ProgramFixture& fixture, const QString& name) {
             const bool shown = fixture.showUploader();
             fixture.state().selectFormat("Separate");
             fixture.state().setSelectedFileLeft(QUrl::fromLocalFile('/' + name));
             fixture.state().takeToolReport({{}, "UPLOADFAILED: refused"});
             fill(fixture, name);
             return shown && fixture.driver().ready("whyButton");
         }},
        {"details hidden",
         [](testkit::ProgramFixture& fixture, const QString& name) {
             const bool shown = fixture.showUploader();
             fill(fixture, name);
             fixture.state().setShowDetails(false);
             return shown;
         }},
        {"why it failed",
         [](testkit::ProgramFixture& fixture, const QString& name) {
             const bool shown = fixture.showUploader();
             fixture.state().takeToolReport({"/report.log", "UPLOADFAILED: /" + name + " : 403 : refused"});
             fixture.state().enter(UploadState::Failed, name);
             const bool told = fixture.click("whyButton");
             return shown && told && fixture.driver().ready("failureSheet");
         }},
        {"key",
         [](testkit::ProgramFixture& fixture, const QString& name) {
             fixture.session().setApiKey("key");
             fixture.application().appManager()->setEditingAPIKey(true);
             const bool shown = fixture.driver().ready("cancelKeyButton");
             fixture.item("keyField")->setProperty("text", name);
             return shown;
         }},
    };
    const std::pair<const char*, QString> names[]{
        {"short", "Harbour"},
        {"letters", QString("W").repeated(240)},
        {"Arabic", QString::fromUtf8("مرحبا").repeated(48)},
        {"Hangul and emoji", QString::fromUtf8("한🎥").repeated(120)},
    };
    for (const auto& [what, scene] : scenes) {
        for (const auto& [kind, name] : names) {
            for (const double textScale : {1.0, 2.0}) {
                QTest::addRow("%s, %s, %g", what, kind, textScale) << scene << name << textScale;
            }
        }
    }
}

bool RoomTest::fits(const QQuickItem& item, const QRectF& view) const
{
    const QRectF place = placeOf(item);
    const bool scrolls = m_fixture->item("failureSheet") == nullptr;
    if (place.left() < view.left() - 0.01 || place.right() > view.right() + 0.01 ||
        (!scrolls && (place.top() < view.top() || place.bottom() > view.bottom()))) {
        return false;
    }
    if (!item.property("truncated").isValid()) {
        return true;
    }
    return (item.property("contentWidth").toDouble() <= place.width() + 1 || item.clip()) &&
           item.property("contentHeight").toDouble() <= place.height() + 1 &&
           (!item.property("truncated").toBool() || !view.contains(place.center()) || explained(item));
}

bool RoomTest::explained(const QQuickItem& text) const
{
    QTest::mouseMove(&m_fixture->window(), placeOf(text).center().toPoint());
    const auto tips = m_fixture->window().findChildren<QQuickItem*>();
    return std::any_of(tips.begin(), tips.end(), [&text](const QQuickItem* tip) {
        return tip->property("shown").toBool() && tip->property("text") == text.property("text");
    });
}

void RoomTest::everythingHasItsRoom()
{
    QFETCH(Scene, scene);
    QFETCH(QString, name);
    QFETCH(double, textScale);
    const QDBusConnection desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    testing::FakeService portal(desktop, {"org.freedesktop.portal.Desktop"}, "not what was asked for");
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    QVERIFY(m_fixture->driver().ready("keyField"));
    const auto lineHeight = [this] { return m_fixture->item("submitKeyButton")->height(); };
    const double before = lineHeight();
    portal.announce("org.gnome.desktop.interface", "enable-animations", false);
    portal.announce("org.gnome.desktop.interface", "text-scaling-factor", textScale);
    QVERIFY(testing::settled(QDBusConnection::sessionBus(), desktop)); // or things would still move
    QCOMPARE(lineHeight() > 1.3 * before, textScale > 1);
    QVERIFY(scene(*m_fixture, name));
    for (const QSize size : {QSize(900, 600), QSize(1280, 800), QSize(3840, 2160)}) {
        m_fixture->window().resize(size);
        QTRY_COMPARE(m_fixture->window().contentItem()->size(), QSizeF(size));
        QVERIFY(!m_fixture->window().grabWindow().isNull()); // all is laid out by then
        QList<std::pair<QQuickItem*, QRectF>> drawn;
        QQuickItem* sheet = m_fixture->item("failureSheet");
        collect(sheet != nullptr ? *sheet : *m_fixture->window().contentItem(), 1, QRectF(QPointF(), size),
                drawn);
        QVERIFY(drawn.size() >= 4);
        for (const auto& [item, view] : drawn) {
            QVERIFY2(fits(*item, view), qPrintable(described(*item)));
            for (const auto& [other, otherView] : drawn) {
                const QRectF shared = (placeOf(*item) & view) & (placeOf(*other) & otherView);
                QVERIFY2(other == item || shared.width() < 0.01 || shared.height() < 0.01,
                         qPrintable(described(*item) + " covers " + described(*other)));
            }
        }
    }
}

QTEST_MAIN(RoomTest)

#include "tst_room.moc"

#include "testkit/ProgramFixture.h"
#include "tests/support/FakeService.h"

#include <QAccessible>
#include <QDBusObjectPath>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <utility>

using namespace tessary;

namespace {

/// What is there to be found of that name and role.
QAccessibleInterface* findBelow(QAccessibleInterface* node, const QString& name, QAccessible::Role role)
{
    if (node->role() == role && node->text(QAccessible::Name) == name && !node->state().invisible) {
        return node;
    }
    for (int index = 0; index < node->childCount(); ++index) {
        if (QAccessibleInterface* found = findBelow(node->child(index), name, role)) {
            return found;
        }
    }
    return nullptr;
}

/// What comes up for screen readers to say at once.
QStringList notifications(QAccessibleInterface* node)
{
    QStringList all;
    if (node->role() == QAccessible::Notification && !node->state().invisible) {
        all += node->text(QAccessible::Name);
    }
    for (int index = 0; index < node->childCount(); ++index) {
        all += notifications(node->child(index));
    }
    return all;
}

/// The places in the tree of what has no name.
QStringList nameless(QAccessibleInterface* node, const QString& place)
{
    QStringList all;
    if (node->text(QAccessible::Name).isEmpty()) {
        all += place;
    }
    for (int index = 0; index < node->childCount(); ++index) {
        QAccessibleInterface* child = node->child(index);
        all += nameless(child, QString("%1/%2:%3").arg(place).arg(index).arg(child->role(), 0, 16));
    }
    return all;
}

} // namespace

class AssistiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_fixture = std::make_unique<testkit::ProgramFixture>(); }

    void cleanup() { m_fixture.reset(); }

    void everythingHasAName_data();
    void everythingHasAName();
    void progressIsAValue();
    void statusIsSaid();
    void refusedKeyIsSaid();

private:
    [[nodiscard]] QAccessibleInterface* tree() const
    {
        return QAccessible::queryAccessibleInterface(&m_fixture->window());
    }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void AssistiveTest::everythingHasAName_data()
{
    QTest::addColumn<QString>("screen");
    for (const char* screen :
         {"login", "changed key", "form", "two files", "upload", "success", "question", "dialog"}) {
        QTest::newRow(screen) << screen;
    }
}

void AssistiveTest::everythingHasAName()
{
    QFETCH(QString, screen);
    testing::FakeService portal(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal"),
                                {"org.freedesktop.portal.Desktop"},
                                QVariant::fromValue(QDBusObjectPath("/request/1")));
    portal.answers["Get"] = QVariant::fromValue(QDBusVariant(3U));
    std::shared_ptr<void> underWay;
    if (screen == "login") {
        QVERIFY(m_fixture->driver().ready("keyField"));
    } else {
        QVERIFY(m_fixture->showUploader());
    }
    if (screen == "changed key") {
        m_fixture->application().appManager()->setEditingAPIKey(true);
        QVERIFY(m_fixture->driver().ready("keyField"));
    } else if (screen == "two files") {
        QVERIFY(m_fixture->click("formatOption:Separate"));
    } else if (screen == "upload") {
        m_fixture->state().processOutput(QString("line\n").repeated(200)); // with its scroll bar
        m_fixture->state().enter(UploadState::Requesting);
    } else if (screen == "success") {
        m_fixture->state().showSuccess();
        QTRY_VERIFY(m_fixture->item("successCard") != nullptr);
    } else if (screen == "question") {
        auto registration = m_fixture->application().uploadActivity()->beginRegistration();
        underWay = std::make_shared<decltype(registration)>(std::move(registration));
        m_fixture->press(Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(m_fixture->item("quitQuestion") != nullptr);
    } else if (screen == "dialog") {
        m_fixture->press(Qt::Key_O, Qt::ControlModifier);
        QTRY_VERIFY(portal.calls.contains("org.freedesktop.portal.FileChooser.OpenFile "
                                          "/org/freedesktop/portal/desktop"));
    }
    QCOMPARE(nameless(tree(), QString()).join(" "), QString());
}

void AssistiveTest::progressIsAValue()
{
    QVERIFY(m_fixture->showUploader());
    m_fixture->state().enter(UploadState::Requesting);
    QTRY_VERIFY(m_fixture->item("progressBar") != nullptr);
    QAccessibleInterface* bar = findBelow(tree(), "Upload progress", QAccessible::ProgressBar);
    QVERIFY(bar != nullptr && bar->parent()->indexOfChild(bar) >= 0);
    QVERIFY(bar->state().readOnly && !bar->state().disabled);
    QAccessibleValueInterface* value = bar->valueInterface();
    QVERIFY(value != nullptr);
    QCOMPARE((QVariantList{value->minimumValue(), value->maximumValue(), value->minimumStepSize()}),
             (QVariantList{0, 100, 1}));
    QQuickItem* item = m_fixture->item("progressBar");
    const QRect place = item->mapRectToScene(item->boundingRect()).toRect();
    QCOMPARE(bar->rect(), place.translated(m_fixture->window().position()));
    for (const auto& [progress, percent] :
         {std::pair{0.254, 25}, {1.5, 100}, {-1.0, 0}, {0.75, 75}, {qQNaN(), 0}}) {
        item->setProperty("progress", progress);
        QCOMPARE(value->currentValue().toInt(), percent);
    }
    item->setProperty("description", "2 of 4 MB");
    QCOMPARE(bar->text(QAccessible::Description), "2 of 4 MB");
    item->setEnabled(false); // as below a question
    m_fixture->state().enter(UploadState::Completed);
    QVERIFY(bar->state().invisible && bar->state().disabled);
}

void AssistiveTest::statusIsSaid()
{
    QVERIFY(m_fixture->showUploader());
    QCOMPARE(notifications(tree()), QStringList()); // how it starts is there to be read
    m_fixture->state().enter(UploadState::Uploading);
    QAccessibleInterface* first = findBelow(tree(), "Uploading...", QAccessible::Notification);
    QVERIFY(first != nullptr);
    m_fixture->state().enter(UploadState::Completed);
    QCOMPARE(notifications(tree()), QStringList("Upload completed successfully!"));
    QCOMPARE(first->text(QAccessible::Name), "Uploading..."); // for who comes to read it late
    QAccessibleInterface* second =
        findBelow(tree(), "Upload completed successfully!", QAccessible::Notification);
    const QSignalSpy changes(qobject_cast<QQuickItem*>(second->object()), &QQuickItem::visibleChanged);
    m_fixture->state().enter(UploadState::Completed); // as by the click and again by the tool
    QCOMPARE(notifications(tree()), QStringList("Upload completed successfully!"));
    QCOMPARE(changes.count(), 0);
}

void AssistiveTest::refusedKeyIsSaid()
{
    QVERIFY(m_fixture->driver().type("keyField", "wrong"));
    QVERIFY(m_fixture->click("submitKeyButton"));
    QTRY_VERIFY(!notifications(tree()).isEmpty());
    const QString problem = m_fixture->session().signInProblem();
    QCOMPARE(notifications(tree()), QStringList(problem));
    QCOMPARE(m_fixture->focused(), "keyField"); // first, as the focus cuts short what is being said

    const auto* note =
        qobject_cast<QQuickItem*>(findBelow(tree(), problem, QAccessible::Notification)->object());
    bool comesUpAgain = false;
    connect(note, &QQuickItem::visibleChanged, this,
            [&comesUpAgain, note] { comesUpAgain = comesUpAgain || note->isVisible(); });
    const QSignalSpy gone(note, &QObject::destroyed);
    QVERIFY(m_fixture->showUploader());
    QTRY_COMPARE(gone.count(), 1);
    QVERIFY(!comesUpAgain); // it would be said once more
}

QTEST_MAIN(AssistiveTest)

#include "tst_assistive.moc"

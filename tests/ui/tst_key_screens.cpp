#include "testkit/ProgramFixture.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace tessary;
using namespace Qt::StringLiterals;

class KeyScreensTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_fixture = std::make_unique<testkit::ProgramFixture>(); }

    void cleanup() { m_fixture.reset(); }

    void loginComesUpReadyToType();
    void emptyFieldDisablesTheButtonButNotReturn();
    void submitsOncePerReturn_data();
    void submitsOncePerReturn();
    void failedCheckSaysSoOnAFreshScreen();
    void cancelIsTheWayBack_data();
    void cancelIsTheWayBack();
    void changingKeepsTheScreenUntilTheCheckEnds();
    void screenThatGoesSwallowsWhatWasAimedAtIt();

private:
    void showChangeKey();

    void awaitForm() { QTRY_COMPARE(m_fixture->focused(), u"keyField"_s); }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void KeyScreensTest::showChangeKey()
{
    m_fixture->session().setApiKey(u"old"_s);
    m_fixture->application().appManager()->setEditingAPIKey(true);
    awaitForm();
}

void KeyScreensTest::loginComesUpReadyToType()
{
    QVERIFY(m_fixture->item("keyField") == nullptr); // the form is still to come
    awaitForm();
    QTest::keyClick(&m_fixture->window(), Qt::Key_A);
    QCOMPARE(m_fixture->driver().textOf(u"keyField"_s), u"a"_s);
    QVERIFY(m_fixture->item("cancelKeyButton") == nullptr);
    QVERIFY(m_fixture->item("errorLine") == nullptr);
}

void KeyScreensTest::emptyFieldDisablesTheButtonButNotReturn()
{
    awaitForm();
    QVERIFY(!m_fixture->item("submitKeyButton")->isEnabled());
    QSignalSpy keys(&m_fixture->session(), &SessionManager::apiKeyChanged);
    QTest::keyClick(&m_fixture->window(),
                    Qt::Key_Tab); // nothing else takes the focus; Return is still the field's
    QTest::keyClick(&m_fixture->window(), Qt::Key_Return);
    QTRY_VERIFY(!keys.isEmpty());
}

void KeyScreensTest::submitsOncePerReturn_data()
{
    QTest::addColumn<QString>("focus");
    QTest::addColumn<int>("key");
    QTest::newRow("field") << u"keyField"_s << int(Qt::Key_Return);
    QTest::newRow("field, keypad") << u"keyField"_s << int(Qt::Key_Enter);
    QTest::newRow("button") << u"submitKeyButton"_s << int(Qt::Key_Return);
    QTest::newRow("button, space") << u"submitKeyButton"_s << int(Qt::Key_Space);
    QTest::newRow("nothing") << u""_s << int(Qt::Key_Return);
}

void KeyScreensTest::submitsOncePerReturn()
{
    QFETCH(QString, focus);
    QFETCH(int, key);
    awaitForm();
    QVERIFY(m_fixture->driver().type(u"keyField"_s, u" k "_s));
    QQuickItem* field = m_fixture->item("keyField");
    if (focus.isEmpty()) {
        field->setFocus(false);
    } else {
        m_fixture->driver().find(focus)->forceActiveFocus(Qt::TabFocusReason);
    }
    QSignalSpy stored(&m_fixture->session(), &SessionManager::storedApiKeyChanged);
    QSignalSpy keys(&m_fixture->session(), &SessionManager::apiKeyChanged);
    QTest::keyClick(&m_fixture->window(), Qt::Key(key));
    QTRY_COMPARE(keys.count(), 1);
    QCOMPARE(*m_fixture->session().apiKey(), u" k "_s);
    QTRY_VERIFY(!m_fixture->session().hasApiKey()); // the one check has failed
    QCOMPARE(keys.count(), 2);                      // another would have begun before
    QCOMPARE(stored.count(), 3);                    // at once, by the task, and by the failed check
}

void KeyScreensTest::failedCheckSaysSoOnAFreshScreen()
{
    awaitForm();
    QVERIFY(m_fixture->driver().type(u"keyField"_s, u"wrong"_s));
    QVERIFY(m_fixture->click("submitKeyButton"));
    QTRY_VERIFY(m_fixture->item("errorLine") != nullptr);
    QCOMPARE(m_fixture->driver().textOf(u"errorLine"_s), m_fixture->session().signInProblem());
    QCOMPARE(m_fixture->driver().textOf(u"keyField"_s), u""_s);
    awaitForm();
}

void KeyScreensTest::cancelIsTheWayBack_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("click") << 0;
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("space") << int(Qt::Key_Space);
}

void KeyScreensTest::cancelIsTheWayBack()
{
    QFETCH(int, key);
    showChangeKey();
    QVERIFY(m_fixture->driver().type(u"keyField"_s, u"new"_s));
    QSignalSpy keys(&m_fixture->session(), &SessionManager::apiKeyChanged);
    if (key == 0) {
        QVERIFY(m_fixture->click("cancelKeyButton"));
    } else {
        QTest::keyClick(&m_fixture->window(), Qt::Key_Tab);
        QTest::keyClick(&m_fixture->window(), Qt::Key_Tab);
        QCOMPARE(m_fixture->focused(), u"cancelKeyButton"_s);
        QTest::keyClick(&m_fixture->window(), Qt::Key(key));
    }
    QTRY_VERIFY(m_fixture->item("uploadButton") != nullptr);
    QCOMPARE(keys.count(), 0);
    QCOMPARE(*m_fixture->session().apiKey(), u"old"_s);
}

void KeyScreensTest::screenThatGoesSwallowsWhatWasAimedAtIt()
{
    awaitForm();
    m_fixture->session().setApiKey(u"key"_s);
    QTRY_VERIFY(m_fixture->item("nameField") != nullptr);
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("nameField"));
    QVERIFY(m_fixture->focused() != u"nameField"_s);
    QVERIFY(m_fixture->click("nameField")); // as soon as it takes input
    QCOMPARE(m_fixture->focused(), u"nameField"_s);
}

void KeyScreensTest::changingKeepsTheScreenUntilTheCheckEnds()
{
    showChangeKey();
    QQuickItem* field = m_fixture->item("keyField");
    QVERIFY(m_fixture->driver().type(u"keyField"_s, u"new"_s));
    // The problem is told at the end of the check, before the key goes.
    bool kept = false;
    connect(&m_fixture->session(), &SessionManager::signInProblemChanged, this, [&] {
        const bool ended = !m_fixture->session().signInProblem().isEmpty();
        kept = ended && m_fixture->session().apiKey() == u"new"_s && m_fixture->item("keyField") == field;
    });
    QTest::keyClick(&m_fixture->window(), Qt::Key_Return);
    QTRY_VERIFY(kept);
    QTRY_VERIFY(m_fixture->item("errorLine") != nullptr); // signed out by the failed check
    QVERIFY(!m_fixture->application().appManager()->editingAPIKey());
}

QTEST_MAIN(KeyScreensTest)

#include "tst_key_screens.moc"

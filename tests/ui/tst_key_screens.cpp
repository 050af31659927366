#include "ScreenBench.h"

#include <QSignalSpy>

using namespace tessary;
using namespace Qt::StringLiterals;

class KeyScreensTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_bench = std::make_unique<ScreenBench>(); }

    void cleanup() { m_bench.reset(); }

    void loginComesUpReadyToType();
    void emptyFieldDisablesTheButtonButNotReturn();
    void submitsOncePerReturn_data();
    void submitsOncePerReturn();
    void failedCheckSaysSoOnAFreshScreen();
    void cancelIsTheWayBack_data();
    void cancelIsTheWayBack();
    void changingKeepsTheScreenUntilTheCheckEnds();

private:
    void showChangeKey();

    void awaitForm() { QTRY_COMPARE(m_bench->focused(), u"keyField"_s); }

    std::unique_ptr<ScreenBench> m_bench;
};

void KeyScreensTest::showChangeKey()
{
    m_bench->session().setApiKey(u"old"_s);
    m_bench->application().appManager()->setEditingAPIKey(true);
    awaitForm();
}

void KeyScreensTest::loginComesUpReadyToType()
{
    QVERIFY(m_bench->item("keyField") == nullptr); // the form is still to come
    awaitForm();
    QTest::keyClick(&m_bench->window(), Qt::Key_A);
    QCOMPARE(m_bench->driver().textOf(u"keyField"_s), u"a"_s);
    QVERIFY(m_bench->item("cancelKeyButton") == nullptr);
    QVERIFY(m_bench->item("errorLine") == nullptr);
}

void KeyScreensTest::emptyFieldDisablesTheButtonButNotReturn()
{
    awaitForm();
    QVERIFY(!m_bench->item("submitKeyButton")->isEnabled());
    QSignalSpy keys(&m_bench->session(), &SessionManager::apiKeyChanged);
    QTest::keyClick(&m_bench->window(),
                    Qt::Key_Tab); // nothing else takes the focus; Return is still the field's
    QTest::keyClick(&m_bench->window(), Qt::Key_Return);
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
    QVERIFY(m_bench->driver().type(u"keyField"_s, u" k "_s));
    QQuickItem* field = m_bench->item("keyField");
    if (focus.isEmpty()) {
        field->setFocus(false);
    } else {
        m_bench->driver().find(focus)->forceActiveFocus(Qt::TabFocusReason);
    }
    QSignalSpy stored(&m_bench->session(), &SessionManager::storedApiKeyChanged);
    QSignalSpy keys(&m_bench->session(), &SessionManager::apiKeyChanged);
    QTest::keyClick(&m_bench->window(), Qt::Key(key));
    QTRY_COMPARE(keys.count(), 1);
    QCOMPARE(*m_bench->session().apiKey(), u" k "_s);
    QTRY_VERIFY(!m_bench->session().hasApiKey()); // the one check has failed
    QTest::qWait(50);
    QCOMPARE(keys.count(), 2);
    QCOMPARE(stored.count(), 3); // at once, by the task, and by the failed check
}

void KeyScreensTest::failedCheckSaysSoOnAFreshScreen()
{
    awaitForm();
    QVERIFY(m_bench->driver().type(u"keyField"_s, u"wrong"_s));
    QVERIFY(m_bench->click("submitKeyButton"));
    QTRY_VERIFY(m_bench->item("errorLine") != nullptr);
    QCOMPARE(m_bench->driver().textOf(u"errorLine"_s), m_bench->session().signInProblem());
    QCOMPARE(m_bench->driver().textOf(u"keyField"_s), u""_s);
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
    QVERIFY(m_bench->driver().type(u"keyField"_s, u"new"_s));
    QSignalSpy keys(&m_bench->session(), &SessionManager::apiKeyChanged);
    if (key == 0) {
        QVERIFY(m_bench->click("cancelKeyButton"));
    } else {
        QTest::keyClick(&m_bench->window(), Qt::Key_Tab);
        QTest::keyClick(&m_bench->window(), Qt::Key_Tab);
        QCOMPARE(m_bench->focused(), u"cancelKeyButton"_s);
        QTest::keyClick(&m_bench->window(), Qt::Key(key));
    }
    QTRY_VERIFY(m_bench->item("uploadButton") != nullptr);
    QCOMPARE(keys.count(), 0);
    QCOMPARE(*m_bench->session().apiKey(), u"old"_s);
}

void KeyScreensTest::changingKeepsTheScreenUntilTheCheckEnds()
{
    showChangeKey();
    QQuickItem* field = m_bench->item("keyField");
    QVERIFY(m_bench->driver().type(u"keyField"_s, u"new"_s));
    // The problem is told at the end of the check, before the key goes.
    bool kept = false;
    connect(&m_bench->session(), &SessionManager::signInProblemChanged, this, [&] {
        const bool ended = !m_bench->session().signInProblem().isEmpty();
        kept = ended && m_bench->session().apiKey() == u"new"_s && m_bench->item("keyField") == field;
    });
    QTest::keyClick(&m_bench->window(), Qt::Key_Return);
    QTRY_VERIFY(kept);
    QTRY_VERIFY(m_bench->item("errorLine") != nullptr); // signed out by the failed check
    QVERIFY(!m_bench->application().appManager()->editingAPIKey());
}

QTEST_MAIN(KeyScreensTest)

#include "tst_key_screens.moc"

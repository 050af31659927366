#include "testkit/ProgramFixture.h"

#include "ui/uploader/UploaderStateHolder.h"

#include <QFile>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace tessary::testkit {

ProgramFixture::ProgramFixture(const QString& baseUrl, const QString& resourcesFolder)
    : m_program({baseUrl, m_folder.filePath(QStringLiteral("settings")), resourcesFolder})
{
    if (!m_program.openWindow()) {
        qFatal("no window");
    }
}

FileUploaderState& ProgramFixture::state() const
{
    const auto* holder = window().findChild<UploaderStateHolder*>();
    if (holder == nullptr || holder->state() == nullptr) {
        qFatal("the uploader screen is not shown");
    }
    return *holder->state();
}

QQuickItem* ProgramFixture::item(const char* name) const
{
    return driver().find(QLatin1StringView(name));
}

QPoint ProgramFixture::centreOf(const char* name) const
{
    return item(name)->mapToScene(item(name)->boundingRect().center()).toPoint();
}

bool ProgramFixture::click(const char* name) const
{
    return driver().click(QLatin1StringView(name));
}

void ProgramFixture::press(int key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(&window(), Qt::Key(key), modifiers);
}

QString ProgramFixture::focused() const
{
    return window().activeFocusItem() == nullptr ? QString() : window().activeFocusItem()->objectName();
}

bool ProgramFixture::signIn(const QString& key)
{
    return driver().type(QStringLiteral("keyField"), key) && click("submitKeyButton") &&
           arriveAt("filePicker");
}

bool ProgramFixture::showUploader(const QString& key)
{
    session().setApiKey(key);
    return arriveAt("nameField");
}

bool ProgramFixture::arriveAt(const char* name) const
{
    if (!QTest::qWaitFor([&] { return item(name) != nullptr; }, 60'000)) {
        return false;
    }
    // No hand was on its way to the screen before, so the time in which presses are swallowed need not pass.
    window().findChild<QObject*>(QStringLiteral("changeTime"))->setProperty("running", false);
    return driver().ready(QLatin1StringView(name));
}

bool ProgramFixture::fillForm(const QUrl& file, const QString& videoName) const
{
    return driver().drop(QStringLiteral("filePicker"), {file}) &&
           driver().type(QStringLiteral("nameField"), videoName);
}

QUrl ProgramFixture::makeFile(const QString& name, const QByteArray& content) const
{
    QFile file(pathOf(name));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    return written ? QUrl::fromLocalFile(file.fileName()) : QUrl();
}

} // namespace tessary::testkit

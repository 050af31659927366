#pragma once

#include "app/tessary_macos_uploaderApp.h"
#include "standins/LocalService.h"
#include "testkit/ScriptedTool.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <algorithm>
#include <memory>

namespace tessary {

/// Notes its file and URL, says so, and then waits for a file named "go" (or "go-FILE") before it exits.
inline const QByteArray patientTool = R"(
    name=$(basename "$2"); trap 'echo "stopped $name"; exit 1' TERM
    printf '%s %s\n' "$name" "$3" >> "$home/runs"
    echo "copying $name"
    until [ -e "$home/go" ] || [ -e "$home/go-$name" ]; do sleep 0.02; done
    echo "copied $name")";

/// What UploadFixture notes when the flag of an upload under way is set or cleared.
inline const QString busy = QStringLiteral("[busy]");
inline const QString idle = QStringLiteral("[idle]");

/// A program without a screen: its state objects against a local service and a scripted tool.
class UploadFixture
{
public:
    explicit UploadFixture(const QByteArray& script)
        : tool(script),
          app({service.baseUrl(), m_folder.path(), tool.folder()}),
          screen(app.uploaderStates()->make())
    {
        app.sessionManager()->setApiKey(standins::localWorkspaces().at(0).key);
        const FileUploaderState* state = screen.get();
        QObject::connect(state, &FileUploaderState::statusMessageChanged, &app,
                         [this, state] { announced.append(state->statusMessage()); });
        QObject::connect(state, &FileUploaderState::isUploadingChanged, &app,
                         [this, state] { announced.append(state->isUploading() ? busy : idle); });
    }

    static void choose(FileUploaderState& screen, const QString& format)
    {
        screen.selectFormat(format);
        screen.setSelectedFile(QUrl::fromLocalFile(QStringLiteral("/videos/clip.mov")));
        screen.setSelectedFileLeft(QUrl::fromLocalFile(QStringLiteral("/videos/left.mov")));
        screen.setSelectedFileRight(QUrl::fromLocalFile(QStringLiteral("/videos/right.mov")));
        screen.setVideoName(QStringLiteral("My %1 video"));
    }

    void choose(const QString& format = QStringLiteral("2D")) const { choose(*screen, format); }

    void startUpload(const QString& format = QStringLiteral("2D")) const
    {
        choose(format);
        screen->startUpload();
    }

    [[nodiscard]] bool logHas(const char* text) const
    {
        return QTest::qWaitFor([&] { return screen->logs().contains(QLatin1StringView(text)); }, 20'000);
    }

    [[nodiscard]] bool reaches(UploadState state) const
    {
        return QTest::qWaitFor([&] { return screen->uploadState() == state; }, 20'000);
    }

    [[nodiscard]] bool isIdle() const
    {
        return QTest::qWaitFor([&] { return !app.uploadActivity()->underWay(); }, 20'000);
    }

    [[nodiscard]] std::size_t registrations() const
    {
        return service.requestsTo(standins::LocalService::registrationPath).size();
    }

private:
    QTemporaryDir m_folder;

public:
    QStringList announced; ///< status and flag of the screen, each assignment, in order
    standins::LocalService service;
    testkit::ScriptedTool tool;
    mutable tessary_macos_uploaderApp app;
    std::shared_ptr<FileUploaderState> screen;
};

} // namespace tessary

#pragma once

#include "app/tessary_macos_uploaderApp.h"
#include "local/LocalService.h"
#include "tests/support/ScriptedTool.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace tessary {

/// Notes its file and URL, says so, and then waits for a file named "go" (or "go-FILE") before it exits.
inline const QByteArray patientTool = R"(
    name=$(basename "$2"); trap 'echo "stopped $name"; exit 1' TERM
    printf '%s %s\n' "$name" "$3" >> "$home/runs"
    echo "copying $name"
    until [ -e "$home/go" ] || [ -e "$home/go-$name" ]; do sleep 0.02; done
    echo "copied $name")";

/// A program without a screen: its state objects against a local service and a scripted tool.
class Bench
{
public:
    explicit Bench(const QByteArray& script)
        : tool(script),
          app({service.baseUrl(), m_folder.path(), tool.folder()}),
          screen(app.makeUploaderState())
    {
        app.sessionManager()->setApiKey(local::localWorkspaces().at(0).key);
        QObject::connect(screen.get(), &FileUploaderState::statusMessageChanged, &app,
                         [this, state = screen.get()] { statuses.append(state->statusMessage()); });
    }

    void choose(const QString& format = QStringLiteral("2D")) const
    {
        screen->selectFormat(format);
        screen->setSelectedFile(QUrl::fromLocalFile(QStringLiteral("/videos/clip.mov")));
        screen->setSelectedFileLeft(QUrl::fromLocalFile(QStringLiteral("/videos/left.mov")));
        screen->setSelectedFileRight(QUrl::fromLocalFile(QStringLiteral("/videos/right.mov")));
        screen->setVideoName(QStringLiteral("My %1 video"));
    }

    void startUpload(const QString& format = QStringLiteral("2D")) const
    {
        choose(format);
        screen->startUpload();
    }

    [[nodiscard]] bool logHas(const char* text) const
    {
        return QTest::qWaitFor([&] { return screen->logs().contains(QLatin1StringView(text)); }, 20'000);
    }

    [[nodiscard]] bool reaches(const QString& status) const
    {
        return QTest::qWaitFor([&] { return screen->statusMessage() == status; }, 20'000);
    }

    [[nodiscard]] bool isIdle() const
    {
        return QTest::qWaitFor([&] { return !app.uploadActivity()->underWay(); }, 20'000);
    }

    /// How many were sent; what follows a redirect is none.
    [[nodiscard]] std::size_t registrations() const
    {
        const auto sent = service.requestsTo(local::LocalService::registrationPath);
        const auto isOne = [](const auto& request) { return request.method == "POST"; };
        return static_cast<std::size_t>(std::count_if(sent.begin(), sent.end(), isOne));
    }

private:
    QTemporaryDir m_folder;

public:
    local::LocalService service;
    ScriptedTool tool;
    mutable tessary_macos_uploaderApp app;
    std::shared_ptr<FileUploaderState> screen;
    QStringList statuses;
};

} // namespace tessary

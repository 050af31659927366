#pragma once

#include "standins/Azurite.h"
#include "standins/LocalService.h"
#include "testkit/ProgramFixture.h"

#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace tessary {

/// Takes the tool some seconds; a sparse file.
inline constexpr qint64 largeFile = 512LL * 1024 * 1024;

/// A blob store with the first workspace's container in it, and a place for what the tool writes down.
class Store : public standins::Azurite
{
public:
    Store()
    {
        qputenv("AZCOPY_LOG_LOCATION", m_toolFolder.path().toUtf8());
        qputenv("AZCOPY_JOB_PLAN_LOCATION", m_toolFolder.path().toUtf8());
        createContainer(standins::localWorkspaces().front().container);
    }

private:
    QTemporaryDir m_toolFolder;
};

/// One run of the program at a service of its own.
struct Run
{
    explicit Run(const standins::BlobStore& store)
        : service(store), program(service.baseUrl(), QStringLiteral(TESSARY_RESOURCES))
    {
    }

    [[nodiscard]] bool start() { return program.signIn(standins::localWorkspaces().front().key); }

    /// What the service is to answer the next request for an upload URL with.
    void answerNextWith(const QString& uploadUrl)
    {
        service.addFault(standins::LocalService::uploadUrlPath,
                         standins::Fault::answered({200, R"({"sasUrl":")" + uploadUrl.toUtf8() + "\"}"}));
    }

    [[nodiscard]] bool reaches(UploadState wanted) const
    {
        return testkit::WindowDriver::await(statusMessageOf(wanted),
                                            [&] { return program.state().uploadState() == wanted; });
    }

    [[nodiscard]] bool isRegistered() const
    {
        return testkit::WindowDriver::await(QStringLiteral("the registration in the log"), [this] {
            return log().contains(u"Video uploaded. Library ID: ");
        });
    }

    [[nodiscard]] bool isIdle()
    {
        const UploadActivity& activity = *program.application().uploadActivity();
        return testkit::WindowDriver::await(QStringLiteral("every upload to end"),
                                            [&] { return !activity.underWay(); });
    }

    [[nodiscard]] QString log() const { return program.driver().textOf(QStringLiteral("logText")); }

    [[nodiscard]] const std::vector<standins::RegisteredVideo>& videos() const
    {
        return service.library().videos();
    }

    standins::LocalService service;
    testkit::ProgramFixture program;
};

} // namespace tessary

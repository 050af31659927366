#pragma once

#include "service/HttpCall.h"
#include "testkit/ProcessUsage.h"
#include "tests/support/UnknownCertificate.h"
#include "tests/support/UploadFixture.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <chrono>
#include <memory>

namespace tessary {

/// What goes wrong between the program and the service.
enum class Trouble {
    Answer,
    ServiceDown,
    Restart, ///< while the request waits for its answer
    UnknownCertificate,
    SignedOut
};

/// The end of the log of an upload that FaultFixture started.
inline const QString registered = QStringLiteral(", Name: A video\n\n");

/// A fixture that tells what an upload leaves behind.
class FaultFixture : public UploadFixture
{
public:
    explicit FaultFixture(const QByteArray& script, bool overTls = false,
                          std::chrono::milliseconds answerLimit = standardTimeout)
        : UploadFixture(script)
    {
        if (overTls) {
            service.useTls(unknownCertificate());
        }
        screen = std::make_shared<FileUploaderState>(
            UploadDependencies{[this] { return app.sessionManager()->apiKey(); }, app.uploadActivity(),
                               APIService(service.baseUrl(), answerLimit), tool.folder()});
        QTest::qWait(0); // what the last fixture left to be deleted later
        m_before = testkit::takeProcessUsage();
    }

    void upload(const QString& format = QStringLiteral("2D")) const
    {
        choose(format);
        screen->setVideoName(QStringLiteral("A video"));
        screen->startUpload();
    }

    void strike(Trouble trouble, const char* path, const standins::Fault& fault)
    {
        switch (trouble) {
        case Trouble::Answer:
            service.addFault(path, fault);
            break;
        case Trouble::ServiceDown:
            service.goDown();
            break;
        case Trouble::Restart:
            service.addFault(path, standins::Fault::neverAnswered());
            QObject::connect(
                &service, &standins::LocalService::requestReceived, &service,
                [this] {
                    QVERIFY(service.goDown() > 0);
                    service.comeUp();
                },
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
            break;
        case Trouble::UnknownCertificate:
            trustUnknownCertificate(false);
            break;
        case Trouble::SignedOut:
            app.sessionManager()->setApiKey(std::nullopt);
        }
    }

    void mend(Trouble trouble)
    {
        if (trouble == Trouble::Answer) {
            QVERIFY(service.faultsCarriedOut() > 0);
        }
        service.clearFaults();
        if (trouble == Trouble::ServiceDown) {
            service.comeUp();
        }
        trustUnknownCertificate(true);
        app.sessionManager()->setApiKey(standins::localWorkspaces().at(0).key);
    }

    /// The next upload on the same screen is as good as any.
    void checkNextUpload() const
    {
        const std::size_t before = registrations();
        tool.replace("echo copied");
        upload();
        QVERIFY(reaches(UploadState::Completed));
        QVERIFY(logHas(qPrintable(registered)));
        QVERIFY2(screen->logs().startsWith(QLatin1StringView("Received")), qPrintable(screen->logs()));
        QVERIFY(!screen->isUploading());
        QCOMPARE(registrations(), before + 1);
    }

    /// @param keptByToolkit how many descriptors the toolkit itself may leave open
    void checkNothingIsLeft(int keptByToolkit = 0) const
    {
        QVERIFY(isIdle());
        QTRY_VERIFY(app.uploadActivity()->children().isEmpty());
        QTRY_VERIFY(httpSession().children().isEmpty());
        QTRY_COMPARE_LE(testkit::takeProcessUsage().descriptors, m_before.descriptors + keptByToolkit);
        QTRY_COMPARE(testkit::takeProcessUsage().threads, m_before.threads);
        QCOMPARE(testkit::takeProcessUsage().children, QList<qint64>());
    }

private:
    testkit::ProcessUsage m_before{};
};

} // namespace tessary

#pragma once

#include "local/Readings.h"
#include "service/HttpCall.h"
#include "tests/support/Bench.h"
#include "tests/support/UnknownCertificate.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace tessary {

/// What goes wrong between the program and the service.
enum class Trouble { Answer, ServiceDown, ServiceRestarted, UnknownCertificate, SignedOut };

inline const QString completed = QStringLiteral("Upload completed successfully!");

/// The end of the log of an upload that FaultBench started.
inline const QString registered = QStringLiteral(", Name: A video\n\n");

/// A bench that tells what an upload leaves behind.
class FaultBench : public Bench
{
public:
    explicit FaultBench(const QByteArray& script, bool overTls = false,
                        std::chrono::milliseconds answerLimit = APIService::standardTimeout)
        : Bench(script)
    {
        if (overTls) {
            service.useTls(unknownCertificate());
        }
        screen = std::make_shared<FileUploaderState>(
            UploadSurroundings{app.sessionManager(), app.uploadActivity(),
                               APIService(service.baseUrl(), answerLimit), tool.folder()});
        QTest::qWait(0); // what the last bench left to be deleted later
        sharedHttpSession().clearConnectionCache();
        m_before = local::takeReadings();
    }

    void upload(const QString& format = QStringLiteral("2D")) const
    {
        choose(format);
        screen->setVideoName(QStringLiteral("A video"));
        screen->startUpload();
    }

    void strike(Trouble trouble, const char* path, const local::Fault& fault)
    {
        switch (trouble) {
        case Trouble::Answer:
            for (int i = 0; i < (fault.answer && fault.answer->status == 302 ? 60 : 1); ++i) {
                service.addFault(path, fault);
            }
            break;
        case Trouble::ServiceDown:
            service.goDown();
            break;
        case Trouble::ServiceRestarted:
            service.goDown();
            service.comeUp();
            break;
        case Trouble::UnknownCertificate:
            trust(false);
            break;
        case Trouble::SignedOut:
            app.sessionManager()->setApiKey(std::nullopt);
        }
    }

    void mend(Trouble trouble)
    {
        service.clearFaults();
        if (trouble == Trouble::ServiceDown) {
            service.comeUp();
        }
        trust(true);
        app.sessionManager()->setApiKey(local::localWorkspaces().at(0).key);
    }

    /// The next upload on the same screen is as good as any.
    void checkNextUpload() const
    {
        const std::size_t before = registrations();
        tool.replace("echo copied");
        upload();
        QVERIFY(reaches(completed));
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
        QTRY_VERIFY(sharedHttpSession().findChildren<QNetworkReply*>().isEmpty());
        sharedHttpSession().clearConnectionCache();
        QTRY_COMPARE_LE(local::takeReadings().descriptors, m_before.descriptors + keptByToolkit);
        QTRY_COMPARE(local::takeReadings().threads, m_before.threads);
        QCOMPARE(local::takeReadings().children, QList<qint64>());
    }

private:
    static void trust(bool trust)
    {
        trustUnknownCertificate(trust);
        sharedHttpSession().clearConnectionCache(); // which holds on to what was trusted
    }

    local::Readings m_before{};
};

} // namespace tessary

#pragma once

#include "service/APIService.h"
#include "service/Error.h"

#include <QCoro/QCoroTask>
#include <QTest>

#include <functional>
#include <memory>
#include <optional>

namespace tessary {

/// How a call ended: "ok", "none", or the error.
struct Ending
{
    QString result;
    QString domain;
    int code = -1;
    QString description;
};

/// Longer than what the network library reads of a body at once.
inline const QString longName(40'000, u'N');

using Call = std::function<QCoro::Task<QString>(const APIService&)>;

inline QCoro::Task<QString>
pullStartup(const APIService& service) // NOLINT: the service outlives every call here
{
    const std::optional<Workspace> workspace =
        co_await service.pullStartupInformation(QStringLiteral(" a key "));
    co_return workspace ? QStringLiteral("ok") : QStringLiteral("none");
}

inline QCoro::Task<QString> requestUrl(const APIService& service) // NOLINT: as above
{
    const SASUrlResponse answer =
        co_await service.requestUploadURL(QStringLiteral("key"), QString::fromUtf8("a\"b ü.mov"), {});
    co_return answer.sasUrl.isEmpty() ? QStringLiteral("none") : QStringLiteral("ok");
}

inline QCoro::Task<QString> submit(const APIService& service) // NOLINT: as above
{
    const VideoRegistration video{
        QStringLiteral("L"), QStringLiteral("R"), QStringLiteral("Separate"), true, -5, longName};
    const LibraryEntry entry = co_await service.submitLibraryData(QStringLiteral("key"), video);
    co_return entry.fileFormat3D == QLatin1StringView("Separate") ? QStringLiteral("ok")
                                                                  : QStringLiteral("none");
}

inline QCoro::Task<> settle(QCoro::Task<QString> call, std::shared_ptr<std::optional<Ending>> ending)
{
    try {
        const QString result = co_await call;
        *ending = Ending{result, {}, -1, {}};
    } catch (const Error& error) {
        *ending = Ending{QStringLiteral("error"), error.domain(), error.code(), error.description()};
    }
}

inline Ending run(const Call& call, const APIService& service)
{
    const auto ending = std::make_shared<std::optional<Ending>>();
    settle(call(service), ending);
    return QTest::qWaitFor([&ending] { return ending->has_value(); }, 20'000) ? **ending : Ending{};
}

} // namespace tessary

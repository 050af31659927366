#include "service/Error.h"
#include "service/JsonReading.h"
#include "service/LibraryEntry.h"
#include "service/SASUrlResponse.h"
#include "service/Workspace.h"

#include <QJsonObject>

#include <cstdio>

using namespace tessary;

namespace {

void require(bool holds)
{
    if (!holds) {
        __builtin_trap();
    }
}

/// Only an Error may come out of it.
template <typename Reading>
void endsOrThrows(const Reading& read)
{
    try {
        read();
    } catch (const Error& error) {
        require(!error.description().isEmpty());
    }
}

} // namespace

/// What the readers print is not looked at.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    require(std::freopen("/dev/null", "w", stdout) != nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray body(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const JsonReading reading = readJson(body);
    require(reading.document.has_value() == reading.problem.isEmpty());
    const QJsonObject object = reading.document ? reading.document->object() : QJsonObject();
    endsOrThrows([&] {
        if (const auto workspace = Workspace::fromAnswer(body)) {
            require(object.size() >= 17 && workspace->billingDate && workspace->whitelabelKey);
            require(workspace->workspaceName == object[QLatin1StringView("workspace_name")].toString());
            const auto again = Workspace::fromJson(workspace->toJson());
            require(again && again->toJson() == workspace->toJson());
        } else {
            require(reading.document->isArray());
        }
    });
    endsOrThrows([&] {
        const LibraryEntry entry = LibraryEntry::fromAnswer(body, QStringLiteral("code"));
        require(entry.fileFormat3D == QLatin1StringView("code"));
        require(entry.id == object[QLatin1StringView("id")].toInteger());
    });
    endsOrThrows([&] {
        const SASUrlResponse answer = SASUrlResponse::fromAnswer(body);
        require(object[QLatin1StringView("sasUrl")].toString() == answer.sasUrl);
    });
    return 0;
}

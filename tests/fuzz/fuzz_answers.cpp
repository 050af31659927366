#include "service/Error.h"
#include "service/JsonReading.h"
#include "service/LibraryEntry.h"
#include "service/SASUrlResponse.h"
#include "service/Workspace.h"

#include <QJsonObject>

using namespace tessary;

namespace {

void require(bool holds)
{
    if (!holds) {
        __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray body(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const JsonReading reading = readJson(body);
    require(reading.document.has_value() == reading.problem.isEmpty());
    const QJsonObject object = reading.document ? reading.document->object() : QJsonObject();
    if (const auto workspace = Workspace::fromStartupInformation(object)) {
        require(object.size() >= 17 && workspace->billingDate && workspace->whitelabelKey);
        require(workspace->workspaceName == object[QLatin1StringView("workspace_name")].toString());
    }
    if (const auto entry = LibraryEntry::fromAnswer(object, QStringLiteral("code"))) {
        require(entry->fileFormat3D == QLatin1StringView("code"));
        require(entry->id == object[QLatin1StringView("id")].toInteger());
    }
    try {
        const SASUrlResponse answer = SASUrlResponse::fromAnswer(body);
        require(object[QLatin1StringView("sasUrl")].toString() == answer.sasUrl);
    } catch (const Error& error) {
        require(!error.description().isEmpty());
    }
    return 0;
}

#include "service/Workspace.h"

#include "service/Diagnostics.h"
#include "service/Error.h"
#include "service/JsonReading.h"

#include <QJsonArray>

#include <array>

namespace tessary {
namespace {

std::optional<QStringList> jsonStrings(const QJsonValue& value)
{
    if (!value.isArray()) {
        return std::nullopt;
    }
    QStringList strings;
    for (const QJsonValue element : value.toArray()) {
        if (!element.isString()) {
            return std::nullopt;
        }
        strings.append(element.toString());
    }
    return strings;
}

/// The service sends a switch as a number, and it is on when that is exactly 1.
std::optional<bool> switchOfAnswer(const QJsonValue& value)
{
    const std::optional<qint64> number = jsonIntegerOrBool(value);
    return number ? std::optional(number == 1) : std::nullopt;
}

std::optional<bool> switchOfRecord(const QJsonValue& value)
{
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

template <typename Member>
QJsonValue toValue(const Member& member)
{
    return QJsonValue(member);
}

QJsonValue toValue(const QStringList& member)
{
    return QJsonArray::fromStringList(member);
}

template <typename Value>
QJsonValue toValue(const std::optional<Value>& member)
{
    return member ? toValue(*member) : QJsonValue(QJsonValue::Undefined);
}

template <typename Member>
constexpr bool mayBeUnset = false;
template <typename Value>
constexpr bool mayBeUnset<std::optional<Value>> = true;

struct Field
{
    QLatin1StringView wireKey;
    QLatin1StringView name;
    bool (*readAnswer)(const QJsonValue& value, Workspace& workspace);
    bool (*readRecord)(const QJsonValue& value, Workspace& workspace);
    QJsonValue (*write)(const Workspace& workspace);
};

template <auto member, auto ofAnswer, auto ofRecord>
constexpr Field field(const char* wireKey, const char* name)
{
    return {QLatin1StringView(wireKey), QLatin1StringView(name),
            [](const QJsonValue& value, Workspace& workspace) {
                const auto read = ofAnswer(value);
                if (read) {
                    workspace.*member = *read;
                }
                return read.has_value();
            },
            [](const QJsonValue& value, Workspace& workspace) {
                const auto read = ofRecord(value);
                if (read) {
                    workspace.*member = *read;
                }
                const bool unset = value.isUndefined() || value.isNull();
                return read || (unset && mayBeUnset<std::decay_t<decltype(workspace.*member)>>);
            },
            [](const Workspace& workspace) { return toValue(workspace.*member); }};
}

template <auto member>
constexpr auto integer = field<member, jsonIntegerOrBool, jsonInteger>;
template <auto member>
constexpr auto text = field<member, jsonString, jsonString>;
template <auto member>
constexpr auto texts = field<member, jsonStrings, jsonStrings>;
template <auto member>
constexpr auto onOff = field<member, switchOfAnswer, switchOfRecord>;

/// Each value's key in the service's answer, its name in the record's own form, its kind, and where it is
/// kept.
constexpr std::array<Field, 17> fields{{
    integer<&Workspace::billingDate>("billing_date", "billingDate"),
    text<&Workspace::containerName>("container_name", "containerName"),
    text<&Workspace::createdAt>("created_at", "createdAt"),
    integer<&Workspace::currentStreamHours>("current_stream_hours", "currentStreamHours"),
    onOff<&Workspace::drmEnabled>("drm_enabled", "drmEnabled"),
    onOff<&Workspace::encodingEnabled>("encoding_enabled", "encodingEnabled"),
    integer<&Workspace::encodingSeconds>("encoding_seconds", "encodingSeconds"),
    onOff<&Workspace::has8k>("has_8k", "has8k"),
    integer<&Workspace::id>("id", "id"),
    integer<&Workspace::maxStreamHours>("max_stream_hours", "maxStreamHours"),
    integer<&Workspace::seats>("seats", "seats"),
    text<&Workspace::streamContainerName>("stream_container_name", "streamContainerName"),
    onOff<&Workspace::streamingEnabled>("streaming_enabled", "streamingEnabled"),
    texts<&Workspace::userIds>("user_ids", "userIds"),
    text<&Workspace::whitelabelKey>("whitelabel_key", "whitelabelKey"),
    text<&Workspace::workspaceName>("workspace_name", "workspaceName"),
    text<&Workspace::workspaceOwnerId>("workspace_owner_id", "workspaceOwnerId"),
}};

} // namespace

std::optional<Workspace> Workspace::fromAnswer(const QByteArray& body)
{
    const JsonReading reading = readJson(body);
    if (!reading.document) {
        printDeserializingError(reading.problem);
        throw NotJsonError();
    }
    if (!reading.document->isObject()) {
        return std::nullopt;
    }
    const QJsonObject answer = reading.document->object();
    Workspace workspace{};
    for (const Field& field : fields) {
        if (!field.readAnswer(answer[field.wireKey], workspace)) {
            printDeserializingError(QStringLiteral("noData"));
            throw toError(APIServiceError::invalidURL);
        }
    }
    return workspace;
}

QJsonObject Workspace::toJson() const
{
    QJsonObject json;
    for (const Field& field : fields) {
        json.insert(field.name, field.write(*this));
    }
    return json;
}

std::optional<Workspace> Workspace::fromJson(const QJsonObject& json)
{
    Workspace workspace{};
    for (const Field& field : fields) {
        if (!field.readRecord(json[field.name], workspace)) {
            return std::nullopt;
        }
    }
    return workspace;
}

} // namespace tessary

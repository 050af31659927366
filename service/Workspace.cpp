#include "service/Workspace.h"

#include "service/JsonReading.h"

#include <QJsonArray>

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

/// Reads keys into fields until the first that does not fit; what follows it is left unread.
class FieldReader
{
public:
    explicit FieldReader(const QJsonObject& object) : m_object(object) {}

    [[nodiscard]] bool complete() const { return m_complete; }

    template <typename Field>
    void integer(const char* key, Field& field)
    {
        read(key, jsonIntegerOrBool, field);
    }

    template <typename Field>
    void string(const char* key, Field& field)
    {
        read(key, jsonString, field);
    }

    void strings(const char* key, QStringList& field) { read(key, jsonStrings, field); }

    /// A switch comes as an integer and is on when it is exactly 1.
    void flag(const char* key, bool& field)
    {
        qint64 number = 0;
        read(key, jsonIntegerOrBool, number);
        field = number == 1;
    }

private:
    template <typename Value, typename Field>
    void read(const char* key, std::optional<Value> (*convert)(const QJsonValue&), Field& field)
    {
        if (!m_complete) {
            return;
        }
        if (std::optional<Value> value = convert(m_object[QLatin1StringView(key)])) {
            field = *std::move(value);
        } else {
            m_complete = false;
        }
    }

    const QJsonObject& m_object;
    bool m_complete = true;
};

} // namespace

std::optional<Workspace> Workspace::fromStartupInformation(const QJsonObject& answer)
{
    Workspace workspace;
    FieldReader reader(answer);
    reader.integer("billing_date", workspace.billingDate);
    reader.string("container_name", workspace.containerName);
    reader.string("created_at", workspace.createdAt);
    reader.integer("current_stream_hours", workspace.currentStreamHours);
    reader.flag("drm_enabled", workspace.drmEnabled);
    reader.flag("encoding_enabled", workspace.encodingEnabled);
    reader.integer("encoding_seconds", workspace.encodingSeconds);
    reader.flag("has_8k", workspace.has8k);
    reader.integer("id", workspace.id);
    reader.integer("max_stream_hours", workspace.maxStreamHours);
    reader.integer("seats", workspace.seats);
    reader.string("stream_container_name", workspace.streamContainerName);
    reader.flag("streaming_enabled", workspace.streamingEnabled);
    reader.strings("user_ids", workspace.userIds);
    reader.string("whitelabel_key", workspace.whitelabelKey);
    reader.string("workspace_name", workspace.workspaceName);
    reader.string("workspace_owner_id", workspace.workspaceOwnerId);
    return reader.complete() ? std::optional(workspace) : std::nullopt;
}

} // namespace tessary

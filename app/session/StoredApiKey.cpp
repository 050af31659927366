#include "app/session/StoredApiKey.h"

#include "service/Diagnostics.h"
#include "service/JsonReading.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

namespace tessary {
namespace {

constexpr QFile::Permissions ownerFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions ownerFolder = ownerFile | QFile::ExeOwner;
constexpr QLatin1StringView apiKeyName("apiKey");

/// A settings file holds one short text; anything longer is not ours and is not read into memory.
constexpr qint64 largestFile = 1024 * 1024;

void report(const QString& what, const QString& file, const QString& reason)
{
    warnLine(QStringLiteral("%1 %2: %3").arg(what, file, reason));
}

} // namespace

StoredApiKey::StoredApiKey(QString folder)
    : m_folder(std::move(folder)), m_file(m_folder + QStringLiteral("/settings.json"))
{
}

QString StoredApiKey::standardFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/tessary_macos_uploader");
}

QString StoredApiKey::read() const
{
    const QString failed = QStringLiteral("Could not read the settings file");
    QFile file(m_file);
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        report(failed, m_file, file.errorString());
        return {};
    }
    const JsonReading reading = readJson(file.read(largestFile));
    const auto apiKey =
        reading.document ? jsonString(reading.document->object()[apiKeyName]) : std::optional<QString>();
    if (!apiKey) {
        report(failed, m_file, QStringLiteral("it is not a settings file of this program"));
    }
    return apiKey.value_or(QString());
}

bool StoredApiKey::write(const QString& apiKey) const
{
    const QString failed = QStringLiteral("Could not write the settings file");
    if (!QDir().exists(m_folder)) {
        QDir().mkpath(QFileInfo(m_folder).path());
        QDir().mkdir(m_folder, ownerFolder);
    }
    QFile::setPermissions(m_folder, ownerFolder);

    const QByteArray json = QJsonDocument(QJsonObject{{apiKeyName, apiKey}}).toJson();
    QSaveFile file(m_file);
    // The permissions come before the content, so that no one else can read a byte of it. What is still in
    // the buffer when the file is committed may get lost without an error.
    const bool written = file.open(QIODevice::WriteOnly) && file.setPermissions(ownerFile) &&
                         file.write(json) == json.size() && file.flush() && file.commit();
    if (!written) {
        report(failed, m_file, file.errorString());
    }
    return written;
}

} // namespace tessary

#pragma once

#include <QString>

namespace tessary {

/// The one persisted setting, "apiKey", in a settings file of its own that only its owner may read.
class StoredApiKey
{
public:
    /// @param folder where the settings file lies; made (mode 0700) when the first key is written
    explicit StoredApiKey(QString folder = standardFolder());

    /// The program's folder below the user's XDG configuration directory.
    [[nodiscard]] static QString standardFolder();

    /// Reads the file. A missing file is no key (empty text); an unreadable or broken one too, and is
    /// reported on standard error.
    [[nodiscard]] QString read() const;

    /// Replaces the file atomically; false, and a report on standard error, when that fails.
    bool write(const QString& apiKey) const;

private:
    QString m_folder;
    QString m_file;
};

} // namespace tessary

#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace tessary::testkit {

/// A resources folder with a shell script in the transfer tool's place. The script finds the folder in $home.
class ScriptedTool
{
public:
    explicit ScriptedTool(const QByteArray& script) { replace(script); }

    /// For the next run; a script that is running stays what it is.
    void replace(const QByteArray& script) const
    {
        QFile file(path("azcopy"));
        file.remove();
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("The scripted tool cannot be written.");
        }
        file.write("#!/bin/bash\nhome='" + QFile::encodeName(m_folder.path()) + "'\n" + script + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QString folder() const { return m_folder.path(); }

    [[nodiscard]] QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }

    [[nodiscard]] bool has(const char* name) const { return QFile::exists(path(name)); }

    void make(const char* name) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("The scripted tool's folder cannot be written.");
        }
    }

    [[nodiscard]] QByteArray content(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace tessary::testkit

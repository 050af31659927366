#pragma once

#include "standins/BlobStore.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tessary::standins {

/// Keeps one blob store emulator running on a free loopback port, with its data in a temporary folder. Both
/// are gone with the object, and the emulator also when this process dies in any other way. Main thread only;
/// every operation blocks until it is done and throws std::runtime_error when it fails.
class Azurite
{
public:
    Azurite();
    ~Azurite();
    Q_DISABLE_COPY_MOVE(Azurite)

    /// Starts the emulator, again at its old address and with its data if it ran before, and waits until it
    /// accepts requests. A new object is started.
    void start();

    /// Ends the emulator; what it was asked meanwhile is left without an answer.
    void stop();

    /// How much it has written down, in bytes.
    [[nodiscard]] qint64 storedBytes() const;

    [[nodiscard]] const BlobStore& store() const { return m_store; }

    void createContainer(const QString& container);

    /// The content of a blob.
    /// @param blobUrl its plain address, as BlobStore::blobUrl() makes it
    [[nodiscard]] QByteArray readBlob(const QString& blobUrl);

private:
    QByteArray send(const QByteArray& verb, const QString& url);

    QTemporaryDir m_folder;
    QProcess m_process;
    QNetworkAccessManager m_network;
    BlobStore m_store;
};

} // namespace tessary::standins

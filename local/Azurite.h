#pragma once

#include "local/BlobStore.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QTemporaryDir>

namespace tessary::local {

/// Keeps one blob store emulator running on a free loopback port, with its data in a temporary folder. Both
/// are gone with the object, and the emulator also when this process dies in any other way. Main thread only;
/// every operation blocks until it is done and throws std::runtime_error when it fails.
class Azurite
{
public:
    /// Starts the emulator and waits until it accepts requests.
    Azurite();
    ~Azurite();
    Q_DISABLE_COPY_MOVE(Azurite)

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

} // namespace tessary::local

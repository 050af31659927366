#pragma once

#include <QString>

#include <chrono>

namespace tessary::standins {

/// Where the local blob store answers, and the signing of addresses in it with the account that every copy of
/// the emulator knows. A plain value.
struct BlobStore
{
    QString root; ///< "http://HOST:PORT/ACCOUNT", without a trailing slash

    /// The plain address of a blob, its name percent-encoded.
    [[nodiscard]] QString blobUrl(const QString& container, const QString& blob) const;

    /// The address with a permission of its own in the query.
    /// @param permissions letters in the store's order, for example "r" or "cw"
    [[nodiscard]] QString signedBlobUrl(const QString& container, const QString& blob,
                                        const QString& permissions, std::chrono::seconds validFor) const;

    /// A request address that creates the container when it is sent a PUT.
    [[nodiscard]] QString signedContainerCreationUrl(const QString& container) const;
};

} // namespace tessary::standins

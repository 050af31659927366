#pragma once

#include "service/VideoFormat.h"
#include "service/VideoRegistration.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace tessary {

/// What people fill in: which files to upload and what the library is to know of them. A plain value.
struct UploadForm
{
    QUrl selectedFile; ///< empty while none is chosen, as the next two
    QUrl selectedFileLeft;
    QUrl selectedFileRight;
    QString videoName;
    QString selectedFileFormat = VideoFormat::defaultName();
    QString selectedPerspective = VideoFormat::defaultPerspective();

    [[nodiscard]] bool takesTwoFiles() const;
    [[nodiscard]] bool offersPerspective() const;

    /// The files of the format, left before right; empty URLs where none is chosen.
    [[nodiscard]] QList<QUrl> files() const;

    /// All files are chosen and the name has a character, be it a space.
    [[nodiscard]] bool isComplete() const;

    /// @param blobs the addresses that the files were copied to, in the order of the files
    [[nodiscard]] VideoRegistration registration(const QStringList& blobs) const;
};

} // namespace tessary

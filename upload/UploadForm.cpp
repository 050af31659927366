#include "upload/UploadForm.h"

#include <algorithm>
#include <functional>

namespace tessary {

bool UploadForm::takesTwoFiles() const
{
    return selectedFileFormat == VideoFormat::separate();
}

bool UploadForm::offersPerspective() const
{
    return selectedFileFormat != VideoFormat::immersive();
}

QList<QUrl> UploadForm::files() const
{
    return takesTwoFiles() ? QList<QUrl>{selectedFileLeft, selectedFileRight} : QList<QUrl>{selectedFile};
}

bool UploadForm::isComplete() const
{
    const QList<QUrl> chosen = files();
    return !videoName.isEmpty() && std::none_of(chosen.begin(), chosen.end(), std::mem_fn(&QUrl::isEmpty));
}

VideoRegistration UploadForm::registration(const QStringList& blobs) const
{
    return {blobs.at(0),
            blobs.size() > 1 ? std::optional(blobs.at(1)) : std::nullopt,
            selectedFileFormat,
            VideoFormat::is3D(selectedFileFormat),
            VideoFormat::perspectiveNumber(selectedPerspective),
            videoName};
}

} // namespace tessary

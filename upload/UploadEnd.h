#pragma once

#include <QString>

namespace tessary {

class UploadListener;

/// How an upload ended that nobody cancelled.
struct UploadEnd
{
    enum class Kind { Registered, UploadFailed, RegistrationFailed };

    Kind kind;
    QString videoName;
    QString description;          ///< of what failed
    const UploadListener* screen; ///< that started it; shown or gone
};

} // namespace tessary

#pragma once

#include <QString>

namespace tessary {

/// How an upload ended that nobody cancelled.
struct UploadEnd
{
    enum class Kind { Registered, UploadFailed, RegistrationFailed };

    Kind kind;
    QString videoName;
    QString description; ///< of what failed
    quint64 screen;      ///< the number of the one that started it; shown or gone
};

} // namespace tessary

#pragma once

#include "upload/FileUploaderState.h"
#include "upload/UploadDependencies.h"

#include <QObject>

#include <memory>

namespace tessary {

/// Makes the states of uploader screens, all over the same key, service and tool. Main thread only.
class UploaderStateFactory : public QObject
{
    Q_OBJECT

public:
    explicit UploaderStateFactory(UploadDependencies dependencies, QObject* parent = nullptr);

    /// A fresh state. Its uploads keep it alive when the screen goes.
    [[nodiscard]] std::shared_ptr<FileUploaderState> make() const;

private:
    UploadDependencies m_dependencies;
};

} // namespace tessary

#include "upload/UploaderStateFactory.h"

namespace tessary {

UploaderStateFactory::UploaderStateFactory(UploadDependencies dependencies, QObject* parent)
    : QObject(parent), m_dependencies(std::move(dependencies))
{
}

std::shared_ptr<FileUploaderState> UploaderStateFactory::make() const
{
    return std::make_shared<FileUploaderState>(m_dependencies);
}

} // namespace tessary

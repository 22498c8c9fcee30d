#include "model/ExportFileName.h"

namespace stackreel
{

std::filesystem::path exportFileName(const std::filesystem::path& source)
{
    return source.stem().concat("-vertical.mp4");
}

} // namespace stackreel

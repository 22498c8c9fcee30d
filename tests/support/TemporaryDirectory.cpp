#include "tests/support/TemporaryDirectory.h"

#include <stdlib.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace stackreel
{

TemporaryDirectory::TemporaryDirectory()
{
    std::string name = std::filesystem::temp_directory_path() / "-stackreel test ü 東京 100% 'a\" \\b XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::system_category(), name);
    m_path = name;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::vector<std::string> TemporaryDirectory::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::filesystem::path TemporaryDirectory::write(const std::filesystem::path& name,
                                                std::string_view content) const
{
    const auto file = m_path / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
    return file;
}

std::filesystem::path TemporaryDirectory::writeExecutable(const std::filesystem::path& name,
                                                          std::string_view content) const
{
    auto file = write(name, content);
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    return file;
}

std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace stackreel

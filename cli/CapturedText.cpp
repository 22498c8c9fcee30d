#include "cli/CapturedText.h"

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr std::streamoff maxReadSize{65536};

}

void CapturedText::open(const std::filesystem::path& file) noexcept
{
    const std::lock_guard guard(m_lock);
    m_file.open(file, std::ios::binary);
}

std::string CapturedText::readAppended() noexcept
{
    const std::lock_guard guard(m_lock);
    if (!m_file.is_open())
        return {};
    // The last call reached the end of the file, which may have grown since.
    m_file.clear();
    const std::streamoff position = m_file.tellg();
    const std::streamoff end = m_file.seekg(0, std::ios::end).tellg();
    const std::streamoff start = std::max(position, end - maxReadSize);
    std::string text(static_cast<std::size_t>(std::max<std::streamoff>(end - start, 0)), '\0');
    m_file.seekg(start).read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(m_file.gcount()));
    // A line feed in place of the skipped text keeps the lines before and after it apart.
    if (start > position)
        text.insert(text.begin(), '\n');
    return text;
}

} // namespace stackreel

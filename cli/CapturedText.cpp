#include "cli/CapturedText.h"

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr std::streamoff mostAtOnce{65536};

}

void CapturedText::open(const std::filesystem::path& file) noexcept
{
    const std::lock_guard guard(m_lock);
    m_file.open(file, std::ios::binary);
}

std::string CapturedText::takeAppended() noexcept
{
    const std::lock_guard guard(m_lock);
    if (!m_file.is_open())
        return {};
    // The end of the file, reached last time, may have moved.
    m_file.clear();
    const std::streamoff position = m_file.tellg();
    const std::streamoff end = m_file.seekg(0, std::ios::end).tellg();
    const std::streamoff start = std::max(position, end - mostAtOnce);
    std::string text(static_cast<std::size_t>(std::max<std::streamoff>(end - start, 0)), '\0');
    m_file.seekg(start).read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(m_file.gcount()));
    // What was left out must not join the text before it and behind it into one line.
    if (start > position)
        text.insert(text.begin(), '\n');
    return text;
}

} // namespace stackreel

#include "tests/support/ScopedLocale.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace stackreel
{

namespace
{

std::string makeLocale(const TemporaryDirectory& directory)
{
    std::string target = directory / "de_DE.UTF-8";
    std::array<std::string, 7> words = {"localedef", "--no-archive", "-i", "de_DE", "-f", "UTF-8", target};
    std::array<char*, 8> arguments{};
    for (std::size_t index = 0; index < words.size(); ++index)
        arguments.at(index) = words.at(index).data();
    pid_t pid = 0;
    if (::posix_spawnp(&pid, "localedef", nullptr, nullptr, arguments.data(), environ) != 0)
        throw std::runtime_error("localedef cannot be started");
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid || status != 0)
        throw std::runtime_error("localedef failed");
    return directory.path();
}

bool writesComma()
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%.1f", 0.5);
    return std::string(text.data()) == "0,5";
}

/// The punctuation of the C++ locale. A named C++ locale is not used, because it leaks memory in the C
/// library.
struct CommaPunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

} // namespace

ScopedCommaLocale::ScopedCommaLocale()
    : m_places("LOCPATH", makeLocale(m_directory)),
      m_before(std::setlocale(LC_ALL, nullptr)),
      m_libraryBefore(std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation)))
{
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr || !writesComma())
        throw std::runtime_error("the locale writes no comma");
}

ScopedCommaLocale::~ScopedCommaLocale()
{
    std::locale::global(m_libraryBefore);
    std::setlocale(LC_ALL, m_before.c_str());
}

} // namespace stackreel

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// The exit statuses when a tool was not found, when it could not be started, and when it lacks an encoder.
/// The first two are those of a shell.
inline constexpr int notFoundStatus = 127;
inline constexpr int notStartedStatus = 126;
inline constexpr int cannotEncodeStatus = 1;

/// Runs the program at `path` without a shell and returns everything that it writes to standard output.
/// `arguments` do not include the program's name. The program's standard input is empty and its standard
/// error is discarded. It inherits the descriptors that this process inherited, and no others. Returns
/// `std::nullopt` if the program cannot be started, exits with a status other than 0, or is ended by a
/// signal. The child is reaped. If this process ends before the child, for any reason, the child is killed.
std::optional<std::string> outputOf(const std::string& path, const std::vector<std::string>& arguments);

/// Replaces this process by the program at `path` (`execv`), which keeps its process id, environment,
/// descriptors and signal settings. Returns only if that fails: writes one line to standard error and returns
/// `notStartedStatus`.
int execProgram(const std::string& path, const std::vector<std::string>& arguments);

/// Writes to standard error that `tool` was not found, with the same text as the window and the command line,
/// and returns `notFoundStatus`.
int failMissing(std::string_view tool);

/// Writes `message` as one line to standard error.
void writeError(std::string_view message);

/// Writes `message` as one line to standard error and returns `status`, for `return fail(…)`.
int fail(int status, std::string_view message);

} // namespace stackreel::shim

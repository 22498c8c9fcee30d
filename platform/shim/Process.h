#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// The statuses of a command that could not be found, found but not started, or that cannot do what is asked.
/// The first two are what a shell reports.
inline constexpr int notFoundStatus = 127;
inline constexpr int notStartedStatus = 126;
inline constexpr int cannotEncodeStatus = 1;

/// Everything the program at `path` writes to its standard output when run with `arguments` (its own name not
/// among them), to the last byte. Its standard input is empty and its standard error is dropped. Nothing
/// where it cannot be started, ends with another status than 0, or dies by a signal. No shell is involved and
/// no descriptor but the three standard ones reaches it beyond those this process was itself handed down. The
/// child is reaped.
std::optional<std::string> outputOf(const std::string& path, const std::vector<std::string>& arguments);

/// Becomes the program at `path`: the process id, environment, descriptors and signal settings stay. Returns
/// only where that fails, after one line on standard error, with `notStartedStatus`.
int become(const std::string& path, const std::vector<std::string>& arguments);

/// Writes `message` as one line to standard error and returns `status`, for `return fail(…)`.
int fail(int status, std::string_view message);

} // namespace stackreel::shim

#pragma once

#include <QCoroTask>

#include <functional>
#include <memory>

namespace stackreel
{

/// Held by the export that may run. When it is destroyed, the next export may run.
using ExportTurn = std::shared_ptr<void>;

/// Requests a turn when it is called, and ends when the export may run. Throws `CancellationError` when the
/// export is cancelled before that.
using WaitForTurn = std::function<QCoro::Task<ExportTurn>()>;

} // namespace stackreel

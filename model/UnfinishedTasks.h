#pragma once

#include "model/TaskHandle.h"

#include <memory>
#include <utility>
#include <vector>

namespace stackreel
{

/// Keeps the tasks of one kind that have not ended, in the order of their start. Main thread.
class UnfinishedTasks
{
public:
    using Tasks = std::vector<std::shared_ptr<TaskHandle>>;

    void add(std::shared_ptr<TaskHandle> task)
    {
        m_tasks = list();
        m_tasks.push_back(std::move(task));
    }
    Tasks list() const
    {
        Tasks tasks = m_tasks;
        std::erase_if(tasks, [](const auto& task) { return task->hasEnded(); });
        return tasks;
    }

private:
    Tasks m_tasks; ///< may contain tasks that have ended, until the next `add`
};

} // namespace stackreel

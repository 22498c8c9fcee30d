#include "tests/model/ModelTest.h"

#include <QCoreApplication>

namespace stackreel
{

ModelTest::ModelTest() : m_model(std::make_unique<AppModel>(m_services.services()))
{
    m_recorder.emplace(*m_model, m_services.journal);
}

void ModelTest::destroyModel()
{
    m_recorder.reset();
    m_model.reset();
}

void ModelTest::runQueuedTasks()
{
    // Several rounds, because a queued call may queue another one.
    for (int round = 0; round < 3; ++round)
        QCoreApplication::sendPostedEvents();
}

void ModelTest::choose(const std::filesystem::path& file)
{
    model().chooseSource();
    m_services.openPanel->choose(file);
    runQueuedTasks();
}

void ModelTest::finishLoad(double duration)
{
    m_services.inspections.back().task().complete(clip(duration));
    m_services.previews.back().task().complete(*model().sourceURL());
}

void ModelTest::load(double duration, const std::filesystem::path& file)
{
    choose(file);
    finishLoad(duration);
    runQueuedTasks();
    takeJournal();
}

} // namespace stackreel

#include "tests/model/walk/ModelWalk.h"

#include "media/CancellationError.h"
#include "model/TaskHandle.h"
#include "tests/support/TemporaryDirectory.h"

#include <QCoreApplication>

#include <algorithm>
#include <numeric>

namespace stackreel
{

ModelWalk::ModelWalk(Random& random, const std::filesystem::path& folder)
    : m_random(random),
      m_folder(folder),
      m_model(std::make_unique<AppModel>(m_services.services())),
      m_invariants(*m_model, m_services, m_expected)
{
    m_recorder.emplace(*m_model, m_services.journal);
    QObject::connect(m_model.get(), &AppModel::phaseChanged, m_model.get(), [this] {
        const auto kind = m_model->phase().kind();
        if (!ModelInvariants::allowedTransition(m_lastPhase, kind))
            m_broken.push_back("transition: " + std::to_string(static_cast<int>(m_lastPhase)) + " to " +
                               std::to_string(static_cast<int>(kind)));
        m_lastPhase = kind;
        hideTimeline();
    });
    QObject::connect(
        m_model.get(), &AppModel::unfinishedExportsChanged, m_model.get(),
        [this] { m_knownUnfinished = !m_model->unfinishedExports().empty(); }, Qt::QueuedConnection);
    QObject::connect(m_model.get(), &AppModel::backgroundExportsChanged, m_model.get(),
                     [this] { m_knownBackground = m_model->backgroundExports(); });
}

ModelWalk::~ModelWalk() = default;

const std::vector<ModelWalk::Operation>& ModelWalk::operationTable()
{
    static const std::vector<Operation> table = {
        {4, &ModelWalk::showOpenPanel},
        {6, &ModelWalk::answerOpenPanel},
        {12, &ModelWalk::endInspection},
        {12, &ModelWalk::endPreview},
        {4, &ModelWalk::endThumbnails},
        {8, &ModelWalk::showSavePanel},
        {8, &ModelWalk::answerSavePanel},
        {6, &ModelWalk::endExport},
        {3, &ModelWalk::cancelExport},
        {3, &ModelWalk::cancelBackgroundExport},
        {4, &ModelWalk::grabTimeline},
        {12, &ModelWalk::dragTimeline},
        {4, &ModelWalk::releaseTimeline},
        {3, &ModelWalk::stepTimeline},
        {3, &ModelWalk::togglePlayback},
        {1, &ModelWalk::mute},
        {6, &ModelWalk::tick},
        {4, &ModelWalk::moveCrop},
        {1, &ModelWalk::selectCrop},
        {1, &ModelWalk::swapCrops},
        {1, &ModelWalk::chooseAspect},
        {1, &ModelWalk::typeSize},
    };
    return table;
}

void ModelWalk::step()
{
    const auto& table = operationTable();
    static const std::size_t sum = std::accumulate(
        table.begin(), table.end(), std::size_t(0),
        [](std::size_t total, const Operation& operation) { return total + operation.weight; });
    std::size_t left = m_random.below(sum);
    auto chosen = table.begin();
    for (; left >= chosen->weight; ++chosen)
        left -= chosen->weight;
    (this->*chosen->run)();
    // Sometimes carry out the next operation before the queued calls of this one have run.
    if (m_random.chance(85))
        runQueue();
    check();
}

void ModelWalk::check()
{
    auto lines = m_invariants.brokenAnyTime();
    m_broken.insert(m_broken.end(), lines.begin(), lines.end());
    if (m_chosen || !m_destinations.empty())
        return;
    runQueue();
    const bool dragging = m_dragSource == m_expected.source && m_grabbed != 'p';
    lines = m_invariants.brokenWithEmptyQueue(dragging);
    m_broken.insert(m_broken.end(), lines.begin(), lines.end());
    if (m_knownUnfinished == m_model->unfinishedExports().empty())
        m_broken.push_back("task: the change of the unfinished exports is not known");
    if (m_knownBackground != m_model->backgroundExports())
        m_broken.push_back("background: a change is not known");
    m_services.journal->take();
}

template <typename T>
bool ModelWalk::endAll(FakeServices::Calls<T>& calls)
{
    bool stopped = true;
    for (auto& call : calls) {
        if (call.hasEnded())
            continue;
        stopped = stopped && call.isCancelled();
        call.task().fail(CancellationError());
    }
    for (int round = 0; round < queueRounds; ++round)
        QCoreApplication::sendPostedEvents();
    return stopped;
}

void ModelWalk::quit()
{
    note("quit");
    for (const auto& task : m_model->unfinishedExports())
        task->cancel();
    for (const auto& task : m_model->unfinishedLoads())
        task->cancel();
    const std::size_t begun = m_services.exports.size();
    const bool stopped[] = {endAll(m_services.inspections), endAll(m_services.previews),
                            endAll(m_services.exports)};
    if (std::find(std::begin(stopped), std::end(stopped), false) != std::end(stopped))
        m_broken.push_back("quit: nobody stopped a call");
    if (m_services.exports.size() != begun)
        m_broken.push_back("quit: an export began");
    if (!m_model->unfinishedExports().empty() || !m_model->unfinishedLoads().empty())
        m_broken.push_back("quit: something runs");
}

void ModelWalk::end()
{
    if (m_random.chance(50)) {
        runQueue();
        quit();
    } else {
        note("destroy the model");
    }
    m_recorder.reset();
    m_model.reset();
    const std::size_t begun = m_services.exports.size();
    endAll(m_services.exports);
    if (m_services.exports.size() != begun)
        m_broken.push_back("quit: an export began without a model");
    // The destructor of `m_services` ends all other calls.
}

} // namespace stackreel

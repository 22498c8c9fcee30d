#pragma once

#include "desktop/panels/OpenPanel.h"
#include "desktop/panels/SavePanel.h"
#include "tests/support/fakes/Journal.h"

#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

namespace stackreel
{

/// A panel that stays open until the test answers it. The completion handler runs within that call. `Panel`
/// is the interface, `Request` the type of its request.
template <typename Panel, typename Request>
class FakePanel : public Panel
{
public:
    FakePanel(std::shared_ptr<Journal> journal, std::string name)
        : m_journal(std::move(journal)), m_name(std::move(name))
    {
    }

    void begin(const Request& request, PanelCompletion completion) override
    {
        m_journal->note("show " + m_name);
        m_requests.push_back(request);
        m_completions.push_back(std::move(completion));
    }

    /// The request of the last `begin`.
    const Request& request() const { return m_requests.back(); }
    std::size_t timesShown() const { return m_requests.size(); }
    /// Answers the panel that was shown last.
    void answer(const PanelResponse& response) const { m_completions.back()(response); }
    void choose(const std::filesystem::path& file) const { answer({.accepted = true, .url = file}); }

private:
    std::shared_ptr<Journal> m_journal;
    std::string m_name;
    std::vector<Request> m_requests;
    std::vector<PanelCompletion> m_completions;
};

using FakeOpenPanel = FakePanel<OpenPanel, OpenPanelRequest>;
using FakeSavePanel = FakePanel<SavePanel, SavePanelRequest>;

} // namespace stackreel

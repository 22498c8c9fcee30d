#pragma once

#include "player/PlayerLooper.h"
#include "player/base/MediaTime.h"
#include "tests/support/fakes/Journal.h"

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

namespace stackreel
{

class QueuePlayer;

/// The player, file and range of a looper.
struct FakeLoop {
    const QueuePlayer* player = nullptr;
    std::filesystem::path file;
    MediaTimeRange range;
    bool enabled = true; ///< until the looper is disabled or destroyed
};

/// A looper that writes to the journal when it is disabled.
class FakePlayerLooper : public PlayerLooper
{
public:
    FakePlayerLooper(std::shared_ptr<Journal> journal, int number, std::shared_ptr<FakeLoop> loop)
        : m_journal(std::move(journal)), m_name("looper " + std::to_string(number)), m_loop(std::move(loop))
    {
    }

    ~FakePlayerLooper() override { m_loop->enabled = false; }
    FakePlayerLooper(const FakePlayerLooper&) = delete;
    FakePlayerLooper& operator=(const FakePlayerLooper&) = delete;

    const std::string& name() const { return m_name; } ///< "looper 1"
    /// Expires when the looper is destroyed.
    std::weak_ptr<const void> life() const { return m_life; }
    void disableLooping() override
    {
        m_loop->enabled = false;
        m_journal->note(m_name + ": disable");
    }

private:
    std::shared_ptr<Journal> m_journal;
    std::string m_name;
    std::shared_ptr<FakeLoop> m_loop;
    std::shared_ptr<const void> m_life = std::make_shared<char>();
};

} // namespace stackreel

#pragma once

#include "platform/playback/PlayerLooper.h"
#include "tests/support/fakes/Journal.h"

#include <memory>
#include <string>
#include <utility>

namespace stackreel
{

/// A looper that writes to the journal when it is disabled.
class FakePlayerLooper : public PlayerLooper
{
public:
    FakePlayerLooper(std::shared_ptr<Journal> journal, int number)
        : m_journal(std::move(journal)), m_name("looper " + std::to_string(number))
    {
    }

    const std::string& name() const { return m_name; } ///< "looper 1"
    /// Expires when the looper is destroyed.
    std::weak_ptr<const void> life() const { return m_life; }
    void disableLooping() override { m_journal->note(m_name + ": disable"); }

private:
    std::shared_ptr<Journal> m_journal;
    std::string m_name;
    std::shared_ptr<const void> m_life = std::make_shared<char>();
};

} // namespace stackreel

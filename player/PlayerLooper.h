#pragma once

namespace stackreel
{

/// Plays one time range of a file on a player, over and over with no gap, until told to stop or destroyed.
/// Main thread.
class PlayerLooper
{
public:
    virtual ~PlayerLooper() = default;

    /// The range plays to its end once more and is not repeated. Cannot be undone.
    virtual void disableLooping() = 0;
};

} // namespace stackreel

#pragma once

#include "player/base/GStreamer.h"
#include "player/source/TimeOrigin.h"

#include <atomic>
#include <functional>
#include <string_view>
#include <utility>

namespace stackreel
{

/// Which stream of a file is wanted: the first of its kind.
struct WantedStream {
    enum class Kind { pictures, sound };
    Kind kind;
    bool decoded; ///< or else as packets
};

/// Selects one stream of a file and links it to an element. The other streams are not decoded and not even
/// parsed: a parser that fails on a damaged stream would end the reading of the whole file. Also passes the
/// pads of all streams of pictures and sound to a `TimeOrigin`.
///
/// Works on GStreamer's threads after `watch`; `isLinked` may be called on any thread.
class StreamSelector
{
public:
    /// `missing` is called on a thread of GStreamer's when the file does not have the stream.
    StreamSelector(WantedStream wanted, TimeOrigin& origin, std::function<void()> missing)
        : m_wanted(wanted), m_origin(origin), m_missing(std::move(missing))
    {
    }
    StreamSelector(const StreamSelector&) = delete;
    StreamSelector& operator=(const StreamSelector&) = delete;

    /// Call it once, before data flows. The elements must not outlive this object.
    void watch(GstElement* decoder, GstElement* target);
    /// The wanted stream was found and linked.
    bool isLinked() const { return m_linked; }

private:
    static int onAutoplugSelect(GstElement* decoder, GstPad* pad, GstCaps* caps, GstElementFactory* factory,
                                gpointer self);
    static void onPadAdded(GstElement* decoder, GstPad* pad, gpointer self);
    static void onNoMorePads(GstElement* decoder, gpointer self);

    bool isOfKind(std::string_view mediaType) const;
    bool isWanted(std::string_view mediaType) const;
    bool isNeeded(GstElementFactory* factory, std::string_view mediaType) const;
    void link(GstPad* pad, const GstCaps* caps);

    const WantedStream m_wanted;
    TimeOrigin& m_origin;
    const std::function<void()> m_missing;
    GstElement* m_target = nullptr;
    std::atomic<bool> m_linked = false;
};

} // namespace stackreel

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

/// Picks one stream out of a file: has a decoder leave all others as they are and links the wanted one, as it
/// comes out, to what takes it. The others are not even parsed, as a parser that makes no sense of a damaged
/// stream would end the reading of the whole file. On the way it tells a `TimeOrigin` of all pictures and
/// sound there are.
///
/// Works on GStreamer's threads once `watch` was called; the queries may be made on any.
class StreamPicker
{
public:
    /// `missing` is called, on a thread of GStreamer's, when the file turns out not to have the stream.
    StreamPicker(WantedStream wanted, TimeOrigin& origin, std::function<void()> missing)
        : m_wanted(wanted), m_origin(origin), m_missing(std::move(missing))
    {
    }
    StreamPicker(const StreamPicker&) = delete;
    StreamPicker& operator=(const StreamPicker&) = delete;

    /// To be called once, before anything flows. The elements must not outlive the picker.
    void watch(GstElement* decoder, GstElement* taker);
    /// The wanted stream was found.
    bool isLinked() const { return m_linked; }

private:
    static int onAutoplugSelect(GstElement* decoder, GstPad* pad, GstCaps* caps, GstElementFactory* factory,
                                gpointer self);
    static void onPadAdded(GstElement* decoder, GstPad* pad, gpointer self);
    static void onNoMorePads(GstElement* decoder, gpointer self);

    bool isOfKind(std::string_view mediaType) const;
    bool isWanted(std::string_view mediaType) const;
    bool isNeeded(GstElementFactory* factory, std::string_view mediaType) const;
    void take(GstPad* pad, const GstCaps* caps);

    const WantedStream m_wanted;
    TimeOrigin& m_origin;
    const std::function<void()> m_missing;
    GstElement* m_taker = nullptr;
    std::atomic<bool> m_linked = false;
};

} // namespace stackreel

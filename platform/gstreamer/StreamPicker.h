#pragma once

#include "platform/gstreamer/GStreamer.h"
#include "platform/gstreamer/TimeOrigin.h"

#include <atomic>
#include <functional>
#include <utility>

namespace stackreel
{

/// Which stream of a file is wanted: the first of its kind.
struct WantedStream {
    const char* mediaType;            ///< what the caps of its pads start with
    GstElementFactoryListType media;  ///< of the decoders that may be used
};

/// Picks one stream out of a file: has a decoder leave all others undecoded and links the wanted one, as it
/// comes out, to what takes it. On the way it tells a `TimeOrigin` of all pictures and sound there are.
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

    void take(GstPad* pad, const GstCaps* caps);

    const WantedStream m_wanted;
    TimeOrigin& m_origin;
    const std::function<void()> m_missing;
    GstElement* m_taker = nullptr;
    std::atomic<bool> m_linked = false;
};

} // namespace stackreel

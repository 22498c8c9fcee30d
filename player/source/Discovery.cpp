#include "player/source/Discovery.h"

#include "player/base/GStreamer.h"

#include <mutex>
#include <stdexcept>
#include <string>

namespace stackreel
{

namespace
{

struct GFree {
    void operator()(gpointer memory) const { g_free(memory); }
};
struct MainLoopUnref {
    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
};
using DiscovererPtr = std::unique_ptr<GstDiscoverer, GObjectUnref>;

/// The event loop of a discovery, on the thread that constructs it.
class LocalLoop
{
public:
    LocalLoop() : m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE))
    {
        g_main_context_push_thread_default(m_context);
    }
    LocalLoop(const LocalLoop&) = delete;
    LocalLoop& operator=(const LocalLoop&) = delete;
    ~LocalLoop()
    {
        g_main_context_pop_thread_default(m_context);
        m_loop.reset();
        g_main_context_unref(m_context);
    }

    void run() { g_main_loop_run(m_loop.get()); }
    void quit() { g_main_loop_quit(m_loop.get()); }

private:
    GMainContext* m_context;
    std::unique_ptr<GMainLoop, MainLoopUnref> m_loop;
};

/// Ends a discovery by posting an error from its source. Do not call `gst_discoverer_stop` during a
/// discovery: GStreamer 1.22 then may deadlock on a lock that the removal of a pad takes, too.
class Interruption
{
public:
    /// Any thread.
    void request()
    {
        const std::lock_guard lock(m_mutex);
        m_requested = true;
        postError();
    }
    /// Also ends a discovery whose end was requested before it had a source.
    void setSource(GstElement* source)
    {
        const std::lock_guard lock(m_mutex);
        m_source.reset(GST_ELEMENT(gst_object_ref(source)));
        postError();
    }

private:
    void postError() const
    {
        if (!m_requested || !m_source)
            return;
        GError* error = g_error_new_literal(GST_CORE_ERROR, GST_CORE_ERROR_FAILED, "stopped");
        gst_element_post_message(m_source.get(),
                                 gst_message_new_error(GST_OBJECT(m_source.get()), error, nullptr));
        g_error_free(error);
    }

    std::mutex m_mutex;
    bool m_requested = false;
    GstElementPtr m_source;
};

struct Finding {
    LocalLoop loop;
    Interruption interruption;
    DiscovererInfoPtr info;
    std::string error;
};

void onSourceSetup(GstDiscoverer*, GstElement* source, gpointer self)
{
    static_cast<Finding*>(self)->interruption.setSource(source);
}

void onDiscovered(GstDiscoverer*, GstDiscovererInfo* info, GError* error, gpointer self)
{
    auto* finding = static_cast<Finding*>(self);
    finding->info.reset(GST_DISCOVERER_INFO(g_object_ref(info)));
    if (error)
        finding->error = error->message;
}

void onFinished(GstDiscoverer*, gpointer self)
{
    static_cast<Finding*>(self)->loop.quit();
}

DiscovererPtr makeDiscoverer(int timeoutSeconds)
{
    GError* error = nullptr;
    DiscovererPtr discoverer(
        gst_discoverer_new(static_cast<GstClockTime>(timeoutSeconds) * GST_SECOND, &error));
    if (discoverer)
        return discoverer;
    const std::string reason = error ? error->message : "no discoverer";
    g_clear_error(&error);
    throw std::runtime_error(reason);
}

} // namespace

DiscovererInfoPtr discover(const std::filesystem::path& file, int timeoutSeconds, const std::stop_token& stop)
{
    ensureGStreamer();
    if (stop.stop_requested())
        throw std::runtime_error("stopped before anything was found out");
    Finding finding;
    const DiscovererPtr discoverer = makeDiscoverer(timeoutSeconds);
    const std::unique_ptr<gchar, GFree> uri(gst_filename_to_uri(file.c_str(), nullptr));
    if (!uri)
        throw std::runtime_error("not a file's name: " + file.string());
    g_signal_connect(discoverer.get(), "source-setup", G_CALLBACK(onSourceSetup), &finding);
    g_signal_connect(discoverer.get(), "discovered", G_CALLBACK(onDiscovered), &finding);
    g_signal_connect(discoverer.get(), "finished", G_CALLBACK(onFinished), &finding);
    gst_discoverer_start(discoverer.get());
    gst_discoverer_discover_uri_async(discoverer.get(), uri.get());
    {
        const std::stop_callback onStop(stop, [&finding] { finding.interruption.request(); });
        finding.loop.run();
    }
    gst_discoverer_stop(discoverer.get());
    if (!finding.info)
        throw std::runtime_error("nothing was found out");
    const GstDiscovererResult result = gst_discoverer_info_get_result(finding.info.get());
    if (result != GST_DISCOVERER_OK && result != GST_DISCOVERER_MISSING_PLUGINS)
        throw std::runtime_error(finding.error.empty() ? "the file cannot be read" : finding.error);
    return std::move(finding.info);
}

} // namespace stackreel

#include "platform/gstreamer/Discovery.h"

#include "platform/gstreamer/GStreamer.h"

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

/// An event loop of this thread's own, so that waiting can be ended from another one.
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

    /// Any thread. Also ends a run that has not begun yet.
    void quit()
    {
        // An event of its own, for it must not be lost when the loop does not run yet.
        GSource* event = g_idle_source_new();
        g_source_set_priority(event, G_PRIORITY_HIGH);
        g_source_set_callback(
            event,
            [](gpointer loop) -> gboolean {
                g_main_loop_quit(static_cast<GMainLoop*>(loop));
                return G_SOURCE_REMOVE;
            },
            m_loop.get(), nullptr);
        g_source_attach(event, m_context);
        g_source_unref(event);
    }

private:
    GMainContext* m_context;
    std::unique_ptr<GMainLoop, MainLoopUnref> m_loop;
};

struct Finding {
    LocalLoop loop;
    DiscovererInfoPtr info;
    std::string error;
};

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
    g_signal_connect(discoverer.get(), "discovered", G_CALLBACK(onDiscovered), &finding);
    g_signal_connect(discoverer.get(), "finished", G_CALLBACK(onFinished), &finding);
    gst_discoverer_start(discoverer.get());
    gst_discoverer_discover_uri_async(discoverer.get(), uri.get());
    {
        const std::stop_callback onStop(stop, [&finding] { finding.loop.quit(); });
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

#include "player/pictures/VideoBuffers.h"

#include <gtest/gtest.h>

using namespace stackreel;

namespace
{

GstVideoInfo pictures(guint width, guint height)
{
    ensureGStreamer();
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_I420, width, height);
    return info;
}

/// A weak reference to the pool of a buffer.
class PoolReference
{
public:
    explicit PoolReference(const GstBufferPtr& buffer) { g_weak_ref_init(&m_pool, buffer->pool); }
    PoolReference(const PoolReference&) = delete;
    PoolReference& operator=(const PoolReference&) = delete;
    ~PoolReference() { g_weak_ref_clear(&m_pool); }

    bool isGone()
    {
        const GstBufferPoolPtr pool(static_cast<GstBufferPool*>(g_weak_ref_get(&m_pool)));
        return pool == nullptr;
    }

private:
    GWeakRef m_pool = {};
};

} // namespace

TEST(VideoBuffersTest, ReusesMemory)
{
    VideoBuffers buffers;
    const GstVideoInfo info = pictures(64, 36);
    GstBufferPtr first = buffers.acquire(info);
    const GstBuffer* const address = first.get();
    first.reset();
    EXPECT_EQ(buffers.acquire(info).get(), address);
}

TEST(VideoBuffersTest, FreesItsPoolOnRelease)
{
    VideoBuffers buffers;
    GstBufferPtr buffer = buffers.acquire(pictures(64, 36));
    PoolReference pool(buffer);
    buffer.reset();
    EXPECT_FALSE(pool.isGone());
    buffers.release();
    EXPECT_TRUE(pool.isGone());
}

TEST(VideoBuffersTest, FreesThePoolOfAnotherSize)
{
    VideoBuffers buffers;
    GstBufferPtr buffer = buffers.acquire(pictures(64, 36));
    PoolReference pool(buffer);
    buffer.reset();
    const GstBufferPtr other = buffers.acquire(pictures(32, 18));
    EXPECT_TRUE(pool.isGone());
}

TEST(VideoBuffersTest, KeepsABufferValidAfterItsDestructor)
{
    GstBufferPtr buffer;
    {
        VideoBuffers buffers;
        buffer = buffers.acquire(pictures(64, 36));
    }
    PoolReference pool(buffer);
    EXPECT_EQ(gst_buffer_memset(buffer.get(), 0, 7, 64 * 36), 64U * 36U);
    buffer.reset();
    EXPECT_TRUE(pool.isGone());
}

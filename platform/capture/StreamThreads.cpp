#include "platform/capture/StreamThreads.h"

#include <gst/gst.h>

namespace {

// GObject needs plain structs and functions. A GType is never unregistered, so this code must stay loaded;
// both plug-ins are therefore linked with -z nodelete.
struct PictureStreamThreads {
    GstTaskPool parent;
};
struct PictureStreamThreadsClass {
    GstTaskPoolClass parent;
};
G_DEFINE_TYPE(PictureStreamThreads, picture_stream_threads, GST_TYPE_TASK_POOL)

struct StreamThread {
    GstTaskPoolFunction run;
    void *data;
};

void *runStreamThread(void *data)
{
    const auto thread = *static_cast<StreamThread *>(data);
    delete static_cast<StreamThread *>(data);
    thread.run(thread.data);
    return nullptr;
}

void *push(GstTaskPool *, GstTaskPoolFunction run, void *data, GError **error)
{
    auto *thread = new StreamThread{run, data};
    GThread *handle = g_thread_try_new("picture", runStreamThread, thread, error);
    if (!handle)
        delete thread;
    return handle;
}

void join(GstTaskPool *, void *handle)
{
    g_thread_join(static_cast<GThread *>(handle));
}

void dispose(GstTaskPool *, void *handle)
{
    g_thread_unref(static_cast<GThread *>(handle));
}

void doNothing(GstTaskPool *)
{
}

void picture_stream_threads_class_init(PictureStreamThreadsClass *type)
{
    // Override prepare(), because GstTaskPool's own version creates a thread pool of GLib.
    type->parent.prepare = [](GstTaskPool *pool, GError **) { doNothing(pool); };
    type->parent.cleanup = doNothing;
    type->parent.push = push;
    type->parent.join = join;
    type->parent.dispose_handle = dispose;
}

void picture_stream_threads_init(PictureStreamThreads *)
{
}

} // namespace

namespace platform {

void endThreadWithStream(GstMessage *message)
{
    if (GST_MESSAGE_TYPE(message) != GST_MESSAGE_STREAM_STATUS)
        return;
    GstStreamStatusType type = {};
    GstElement *owner = nullptr;
    gst_message_parse_stream_status(message, &type, &owner);
    const GValue *task = gst_message_get_stream_status_object(message);
    if (type != GST_STREAM_STATUS_TYPE_CREATE || !task || !G_VALUE_HOLDS(task, GST_TYPE_TASK))
        return;
    auto *pool = static_cast<GstTaskPool *>(g_object_new(picture_stream_threads_get_type(), nullptr));
    gst_task_set_pool(static_cast<GstTask *>(g_value_get_object(task)), pool);
    gst_object_unref(pool);
}

} // namespace platform

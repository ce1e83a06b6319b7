#include "platform/runloop/main_queue_source.h"

#include "platform/runloop/main_queue.h"
#include "platform/runloop/main_thread.h"

#include <glib-unix.h>
#include <glib.h>

namespace platform {

namespace {

struct QueueSource {
    GSource base;
    MainQueue* queue;
    gpointer raised;
    gpointer alarm;
    bool watches;
};

QueueSource& self(GSource* source)
{
    return *reinterpret_cast<QueueSource*>(source);
}

/// Runs before each wait of the context. A context that another thread iterates must not run the calls, nor
/// spin because they wait: there the source watches nothing.
gboolean prepare(GSource* source, gint* timeout)
{
    QueueSource& own = self(source);
    *timeout = -1;
    bool watch = isMainThread();
    if (watch != own.watches) {
        GIOCondition condition = watch ? G_IO_IN : GIOCondition(0);
        g_source_modify_unix_fd(source, own.raised, condition);
        g_source_modify_unix_fd(source, own.alarm, condition);
        own.watches = watch;
    }
    return FALSE;
}

/// GLib cannot pass an exception on, so one that nobody waits for ends the process, as it does in a thread.
gboolean dispatch(GSource* source, GSourceFunc, gpointer) noexcept
{
    self(source).queue->drain();
    return G_SOURCE_CONTINUE;
}

}

void attachToDefaultContext(MainQueue& queue)
{
    static GSourceFuncs functions { prepare, nullptr, dispatch, nullptr, nullptr, nullptr };
    GSource* source = g_source_new(&functions, sizeof(QueueSource));
    QueueSource& own = self(source);
    own.queue = &queue;
    own.raised = g_source_add_unix_fd(source, queue.wake().raisedDescriptor(), G_IO_IN);
    own.alarm = g_source_add_unix_fd(source, queue.wake().alarmDescriptor(), G_IO_IN);
    own.watches = true;
    g_source_set_priority(source, G_PRIORITY_HIGH);
    g_source_set_can_recurse(source, TRUE);
    g_source_set_static_name(source, "main queue");
    g_source_attach(source, nullptr);
    g_source_unref(source);
}

}

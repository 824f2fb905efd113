#pragma once

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstMessage = struct _GstMessage;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// If `message` announces a new streaming task (STREAM_STATUS), gives the task a thread that ends with the
/// stream. GStreamer's default pool would keep the finished thread for 15 s. Other messages are ignored. Any
/// thread may call this.
void endThreadWithStream(GstMessage *message);

} // namespace platform

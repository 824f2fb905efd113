#pragma once

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstMessage = struct _GstMessage;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// Gives a new streaming task (message STREAM_STATUS) a thread that ends with the stream. GStreamer's default
/// pool would keep the finished thread for 15 s. Other messages are ignored. Any thread may call this.
void endThreadWithStream(GstMessage *message);

} // namespace platform

#pragma once

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstMessage = struct _GstMessage;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// Gives the streaming thread that `message` announces (STREAM_STATUS) a thread of its own, which ends with
/// the stream. GStreamer's default pool keeps a finished thread for 15 s. Other messages are ignored. Any
/// thread.
void endThreadWithStream(GstMessage *message);

} // namespace platform

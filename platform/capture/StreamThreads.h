#pragma once

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstMessage = struct _GstMessage;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// Gives the streaming thread that `message` announces a thread of its own, which ends with the stream.
/// GStreamer's default pool keeps a finished thread, under the element's name, for a quarter of a minute.
/// Does nothing for any other message. Any thread.
void endThreadWithStream(GstMessage *message);

} // namespace platform

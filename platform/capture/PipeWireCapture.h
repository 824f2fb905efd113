#pragma once

#include "platform/capture/Capture.h"

namespace platform {

/// Makes the capture system for PipeWire's cameras: one device for each node of class `Video/Source`. The
/// unique ID is the node's `node.name`, the display name its `node.description`.
///
/// The first start of a session initialises GStreamer, which is never shut down. A stop leaves no thread and
/// no descriptor behind. A session continues to deliver frames after a change of the camera's format, and
/// after another node has replaced the camera's node under the same name.
///
/// Error codes are negative errno values for the camera and PipeWire, and GStreamer's positive codes for
/// other failures:
/// -ENODEV: the node does not exist, or no longer.
/// -ETIMEDOUT: PipeWire does not reply.
/// -EBUSY: the session already has an input.
/// -EINVAL: the input's device is not open, or belongs to another capture system.
/// -ECONNREFUSED: PipeWire does not run.
/// -EPIPE: the camera ended the stream.
///
/// A failure after the start is posted on `localCenter` as QuickTimeErrorNotification, once for each start
/// and never after the stop.
std::shared_ptr<Capture> makePipeWireCapture(std::shared_ptr<NotificationCenter> localCenter,
                                             std::shared_ptr<RunLoop> runLoop);

} // namespace platform

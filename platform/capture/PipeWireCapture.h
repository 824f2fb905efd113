#pragma once

#include "platform/capture/Capture.h"

namespace platform {

/// The cameras of PipeWire: one device per node of class `Video/Source`, whose unique ID is the node's
/// `node.name` and whose display name is its `node.description`.
///
/// GStreamer is initialised by the first start, not before, and never shut down; no thread and no descriptor
/// is left after a stop. A stream goes on when its camera changes its format, or when its node goes and comes
/// back under its name.
///
/// Codes of failures: a negative errno for the camera and PipeWire (-ENODEV: the node is not or no longer
/// there; -ETIMEDOUT: PipeWire does not reply; -EBUSY: the session has an input already; -EINVAL: the input's
/// device is not open or not of this system; -ECONNREFUSED: there is no PipeWire; -EPIPE: the camera ended
/// the stream), GStreamer's positive error code for anything else. A failure after the start is posted on
/// `localCenter` as QuickTimeErrorNotification, once for each start and never after the stop.
std::shared_ptr<Capture> makePipeWireCapture(std::shared_ptr<NotificationCenter> localCenter,
                                             std::shared_ptr<RunLoop> runLoop);

} // namespace platform

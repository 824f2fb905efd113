#pragma once

/// Has screen readers meet the camera table as its rows alone, each pressed as a click presses it. Safe to
/// call again.
void installCameraTableAccessibility();

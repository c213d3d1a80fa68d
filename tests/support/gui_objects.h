// Counts what this process holds of the window system, where a leak shows.
#pragma once

/// Pens, brushes, fonts, bitmaps, device contexts and so on.
int drawing_objects();

/// Windows without a parent, and message windows.
int windows_of_this_thread();

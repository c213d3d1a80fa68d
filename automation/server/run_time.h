// The run-time library in a process whose memory may run out.
#pragma once

namespace tornby::automation {

/// Has the library allocate what it takes for granted, before it can run out. To be called before there are objects.
void prepare_run_time();

}  // namespace tornby::automation

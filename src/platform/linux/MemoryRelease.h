#pragma once

namespace kestrelbay {

/// Gives back to the system what this process holds and does not use just now: free memory of the
/// heap, and the pages of programs and other files that it has mapped to read, but for those that
/// were altered in memory. The latter stay in the system's page cache as long as that has room,
/// and come back one by one as they are used, without a copy and mostly without a disk. Takes some
/// milliseconds. Any thread, while others run.
void releaseMemory();

}  // namespace kestrelbay

// Bytes the process heap has handed out, to compare libraries whose memory does not go through a
// manager we can count.
#pragma once
#include <malloc.h>

namespace bench {

inline long long heapBytesInUse() {
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 33))
    return static_cast<long long>(mallinfo2().uordblks);
#else
    return 0;
#endif
}

} // namespace bench

#pragma once

#include "support/ErrorOr.h"

#include <memory>
#include <sys/types.h>

namespace px::filecopy {

// Moves the bytes of one open file into another with the fastest way the kernel offers: a
// reflink (FICLONE) first, then copy_file_range in large chunks, then read and write. A way
// that the file systems involved do not support is dropped for the rest of the job, so a tree
// of small files pays for a refused attempt only once.
class DataCopy {
  public:
    // Copies everything `in` holds from its start into `out`, which is empty. `size` is `in`'s
    // size as last seen; the copy still reads to the end should the file have grown.
    ErrorOr<void> copy(int in, int out, off_t size);

  private:
    enum class Outcome { Done, Unsupported, Failed };
    Outcome clone(int in, int out);
    Outcome copyRange(int in, int out);
    Outcome readWrite(int in, int out);

    bool m_cloneWorks = true;
    bool m_rangeWorks = true;
    int m_errno = 0;
    std::unique_ptr<char[]> m_buffer;
};

} // namespace px::filecopy

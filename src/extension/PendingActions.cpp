// Actions this build does not carry yet: each answers with a clear message instead of silence.
#include "extension/FinderSync.h"

namespace px {} // namespace px

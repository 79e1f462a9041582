// Addition of this project: what the engine keeps silent about.
#pragma once

#include "framework/export.h"
#include "framework/text.h"

// The path of the first file that was there but could not be read (no right to, a fault of the disk, a folder of that
// name, more than 16 MiB where definitions, settings or eras stand) since the last call, by whichever thread; "" when
// there was none, "?" when there is no memory for it. The library goes on without such a file as without one that is
// missing, so that values lack or norms are others: a host asks here whether it may show them.
TOOL_API CString UnreadFile();

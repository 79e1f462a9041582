#pragma once

#include <Exif.h>

#include "exif/byte_source.h"

namespace tool {

// Goes through the segments of a JPEG file up to its first scan (ITU-T T.81, B.1.1), keeps them in the reader and reads
// those that say something about the picture. `Source` is one of byte_source.h.
template <class Source>
bool walk_markers(Source source, CExif& reader);

extern template bool walk_markers(FileSource source, CExif& reader);
extern template bool walk_markers(MemorySource source, CExif& reader);

}  // namespace tool

#include "UnreadFile.h"

#include "platform/or_failed.h"
#include "platform/system.h"

CString UnreadFile() {
    return tool::or_failed(CString("?"), [] { return CString(std::string_view(tool::take_unread())); });
}

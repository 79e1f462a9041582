#include "UnreadFile.h"

#include "platform/system.h"

CString UnreadFile() {
    return CString(std::string_view(tool::take_unread()));
}

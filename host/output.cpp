#include "host/output.h"

#include <CodePage.h>
#include <UnreadFile.h>
#include <surface/whole_file.h>

#include <filesystem>
#include <fstream>

#include "host/error.h"
#include "host/interruption.h"
#include "host/path.h"
#include "host/text_width.h"

namespace cephtool {

Error not_written(const std::string& path) {
    return {ExitCode::bad_input, printable(path) + " could not be written",
            "Check that the folder exists, that you may write there, and that the disk has room."};
}

void check_all_read() {
    const CString path = UnreadFile();
    if (path.IsEmpty()) return;
    throw Error(ExitCode::bad_input, printable(Utf8FromCodePage932(path)) + " is there, but can't be read",
                "Without it the results would be others. Check that you may read it, and the disk.");
}

void write_result(const std::string& text, const std::string& path, std::ostream& out) {
    check_all_read();
    if (path.empty() || path == "-") {
        out << text;
        return;
    }
    const std::filesystem::path file = path_from_utf8(path);
    std::error_code failure;
    const auto there = std::filesystem::status(file, failure);
    if (std::filesystem::exists(there) && !std::filesystem::is_regular_file(there)) {  // a device or a pipe
        std::ofstream device(file, std::ios::binary);
        device << text;
        device.close();
        if (!device) throw not_written(path);
        return;
    }
    Interruption late;  // so that nothing half-written is left
    const std::string error = tool::write_whole_file(path, text);
    late.obey();
    if (!error.empty()) throw not_written(path);
}

}  // namespace cephtool

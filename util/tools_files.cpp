// CTools: files and folders.
#include <algorithm>
#include <cstring>
#include <limits>

#include "Tools.h"
#include "framework/application.h"
#include "framework/exceptions.h"
#include "framework/files.h"
#include "platform/or_failed.h"
#include "platform/system.h"
#include "util/caller_text.h"
#include "util/delimiter.h"
#include "util/folder_choice.h"
#include "util/folders.h"

using tool::as_far_as_possible, tool::or_empty, tool::or_failed;

namespace {

constexpr std::size_t path_size = 260;

// 1, or the message and 0.
// Kept: every failure is called a full disk, whatever its cause. It is what a user can do something about.
int write_or_report(CFile* file, const char* bytes, unsigned long count) {
    if (!file || (!bytes && count > 0)) return 0;
    constexpr unsigned long longest = std::numeric_limits<UINT>::max();
    try {
        do {
            const unsigned long part = std::min(count, longest);
            file->Write(bytes, static_cast<UINT>(part));
            bytes += part;
            count -= part;
        } while (count > 0);
        return 1;
    } catch (CException* failure) {
        failure->Delete();
    } catch (...) {
    }
    AfxMessageBox("Disk Full");
    return 0;
}

}  // namespace

unsigned long CTools::GetFileSize(const char* path) {
    return or_failed(0ul, [&] {
        tool::FileFault fault{};
        std::uint64_t bytes = 0;
        const auto file = tool::OpenFile::open(or_empty(path), {}, &fault);
        if (!file || file->length(&bytes) != tool::FileFault::none) return 0ul;
        return static_cast<unsigned long>(bytes);
    });
}

int CTools::ExistFile(const char* path) {
    return or_failed(0, [&] { return int{tool::file_status(or_empty(path)).has_value()}; });
}

void CTools::FileRemove(const char* path) {
    as_far_as_possible([&] {
        if (tool::file_status(or_empty(path))) tool::remove_file(path);
    });
}

int CTools::WriteFile(CFile* file, const char* text) {
    return write_or_report(file, or_empty(text), static_cast<unsigned long>(std::strlen(or_empty(text))));
}

int CTools::WriteFileB(CFile* file, void* data, unsigned long count) {
    return write_or_report(file, static_cast<const char*>(data), count);
}

int CTools::fCopyNonrFile(const char* src, const char* dst, int failIfExists) {
    return or_failed(0, [&] {
        if (!tool::copy_file(or_empty(src), or_empty(dst), failIfExists != 0)) return 0;
        tool::clear_read_only(dst);
        return 1;
    });
}

int CTools::MkDir(const char* path) {
    return or_failed(0, [&] { return int{tool::make_folders(or_empty(path))}; });
}

int CTools::DirectoryCopy(CString& src, CString& dst) {
    if (src.IsEmpty() || dst.IsEmpty()) return 0;
    return or_failed(0, [&] {
        dst = tool::with_delimiter(static_cast<LPCSTR>(dst)).c_str();
        src = tool::with_delimiter(static_cast<LPCSTR>(src)).c_str();
        return int{tool::copy_folder(src.View(), dst.View())};
    });
}

int CTools::CopyFolderFile(const char* dst, const char* src) {
    return or_failed(0, [&] { return int{tool::copy_plain_files(or_empty(src), or_empty(dst))}; });
}

void CTools::_DeleteFolder(const char* path) {
    tool::empty_folder(or_empty(path));
}

void CTools::DeleteFolder(const char* path) {
    as_far_as_possible([&] { tool::delete_folder(or_empty(path)); });
}

int CTools::BrowseFolder(CWnd* owner, char* path, const char* title, UINT flags) {
    return or_failed(0, [&] {
        const auto chosen = tool::chosen_folder(owner, or_empty(path), or_empty(title), flags);
        if (!chosen || chosen->size() >= path_size || !path) return 0;
        std::memcpy(path, chosen->c_str(), chosen->size() + 1);
        return 1;
    });
}

int CTools::BrowseFolder(CWnd* owner, CString& path, const char* title, UINT flags) {
    return or_failed(0, [&] {
        const auto chosen = tool::chosen_folder(owner, static_cast<LPCSTR>(path), or_empty(title), flags);
        if (chosen) path = chosen->c_str();
        return int{chosen.has_value()};
    });
}

// CTools: text, numbers, colours and file names.
#include <algorithm>
#include <cstring>
#include <string>

#include "Tools.h"
#include "platform/or_failed.h"
#include "platform/path.h"
#include "util/caller_text.h"
#include "util/colour.h"
#include "util/decimal_text.h"
#include "util/delimiter.h"
#include "util/index_code.h"
#include "util/key_value.h"
#include "util/text_cut.h"
#include "util/text_line.h"

using tool::as_far_as_possible, tool::or_empty, tool::or_failed;

namespace {

// The bytes may lie in the target itself.
void copy_bytes(std::string_view bytes, char* target) {
    if (!bytes.empty()) std::memmove(target, bytes.data(), bytes.size());
}

void copy_text(std::string_view text, char* target) {
    copy_bytes(text, target);
    target[text.size()] = '\0';
}

void copy_parts(const tool::KeyValue& parts, char* key, char* value) {
    copy_bytes(parts.key, key);  // Kept: without a terminator; the caller's buffer is zeroed
    copy_text(parts.value, value);
}

// Changes the path in place and gives its new length.
int rewrite(char* path, std::string (*change)(std::string)) {
    if (!path) return 0;
    as_far_as_possible([&] { copy_text(change(path), path); });
    return static_cast<int>(std::strlen(path));
}

}  // namespace

void CTools::StrCut(char* src, char* dst, int start, int count) {
    copy_text(tool::cut(or_empty(src), start, count), dst);
}

void CTools::Del_Space(char* text) {
    if (!text) return;
    const std::string_view whole = text, kept = tool::without_trailing_blanks(whole);
    std::fill(text + kept.size(), text + whole.size(), '\0');
}

void CTools::And_Check(char* src, char* dst) {
    as_far_as_possible([&] { copy_text(tool::with_doubled_ampersands(or_empty(src)), dst); });
}

void CTools::Div_Str(const char* src, char* key, char* value) {
    copy_parts(tool::split_at_equals(or_empty(src)), key, value);
}

void CTools::Div_Str(const CString& src, char* key, char* value) {
    copy_parts(tool::split_at_equals(static_cast<LPCSTR>(src)), key, value);
}

void CTools::Div_StrFree(const char* src, char* key, char* value) {
    as_far_as_possible([&] {
        const tool::KeyValue parts = tool::split_at_equals_long(or_empty(src));
        const std::string printed = tool::printed_without_arguments(parts.value);
        copy_parts({parts.key, printed}, key, value);
    });
}

CString CTools::GetLineText(char* buffer, int* consumed, int max) {
    const tool::TextLine line = tool::first_line(or_empty(buffer), max);
    *consumed = line.consumed;
    return or_failed(CString(), [&] { return CString(line.text); });
}

int CTools::IsNull(unsigned char* data, unsigned int count) {
    return count == 0 || (data && std::all_of(data, data + count, [](unsigned char byte) { return byte == 0; }));
}

CString CTools::FtoA(double value, int decimals) {
    return or_failed(CString(), [&] { return CString(std::string_view(tool::fixed_text(value, decimals))); });
}

int CTools::IsNum(const char* text) {
    return or_failed(0, [&] { return int{tool::is_number(or_empty(text))}; });
}

CString CTools::TransIndex(int value, int width) {
    return or_failed(CString(), [&] { return CString(std::string_view(tool::index_code(value, width))); });
}

int CTools::ConvIndex(const char* code) {
    return tool::index_of_code(or_empty(code));
}

COLORREF CTools::Envert(COLORREF colour) {
    return tool::inverted(colour);
}

COLORREF CTools::Dark(COLORREF colour, int amount) {
    return tool::darkened(colour, amount);
}

CString CTools::GetFileTitle(const char* path) {
    return or_failed(CString(), [&] { return CString(tool::split_path(or_empty(path)).name); });
}

CString CTools::GetFileExt(const char* path) {
    return or_failed(CString(), [&] { return CString(tool::split_path(or_empty(path)).ext); });
}

int CTools::LastDelimAdd(char* path) {
    return rewrite(path, tool::with_delimiter);
}

void CTools::LastDelimAdd(CString& path) {
    as_far_as_possible([&] { path = tool::with_delimiter(static_cast<LPCSTR>(path)).c_str(); });
}

int CTools::LastDelimDel(char* path) {
    return rewrite(path, tool::without_delimiter);
}

void CTools::LastDelimDel(CString& path) {
    as_far_as_possible([&] { path = tool::without_delimiter(static_cast<LPCSTR>(path)).c_str(); });
}

#include "framework/text.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>

#include "framework/exceptions.h"
#include "platform/format.h"
#include "platform/text.h"

namespace {

std::string_view view(LPCSTR text) {
    return text ? std::string_view(text) : std::string_view();
}

std::size_t cut(int value, std::size_t bound) {
    return value <= 0 ? 0 : std::min(static_cast<std::size_t>(value), bound);
}

int position(std::size_t found) {
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

constexpr LPCSTR white_space = " \t\n\v\f\r";

// Bytes at the start of `text` that are characters out of `unwanted`.
std::size_t unwanted_before(std::string_view text, std::string_view unwanted) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = tool::char_length(text.substr(at));
        if (tool::find_text(unwanted, text.substr(at, length)) == std::string_view::npos) break;
        at += length;
    }
    return at;
}

// Where the unwanted characters at the end begin.
std::size_t wanted_end(std::string_view text, std::string_view unwanted) {
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = tool::char_length(text.substr(at));
        if (tool::find_text(unwanted, text.substr(at, length)) == std::string_view::npos) end = at + length;
        at += length;
    }
    return end;
}

}  // namespace

CString::CString(LPCSTR text) : text_(view(text)) {}
CString::CString(LPCSTR text, int count)
    : text_(text ? std::string_view(text, cut(count, SIZE_MAX)) : std::string_view()) {}
CString::CString(char c, int repeat) : text_(cut(repeat, SIZE_MAX), c) {}
CString::CString(std::string_view text) : text_(text) {}

CString& CString::operator=(LPCSTR text) {
    return *this = CString(text);  // `text` may lie in this text
}

CString& CString::operator+=(const CString& text) {
    text_ += text.text_;
    return *this;
}

CString& CString::operator+=(LPCSTR text) {
    text_ += view(text);
    return *this;
}

CString& CString::operator+=(char c) {
    text_ += c;
    return *this;
}

char CString::GetAt(int index) const {
    if (index < 0 || index > GetLength()) AfxThrowInvalidArgException();
    return text_.c_str()[index];
}

void CString::SetAt(int index, char c) {
    if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
    text_[static_cast<std::size_t>(index)] = c;
}

CString CString::Left(int count) const {
    return Mid(0, count);
}

CString CString::Mid(int first) const {
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
    return CString(View().substr(cut(first, text_.size()), cut(count, text_.size())));
}

CString CString::Right(int count) const {
    return CString(View().substr(text_.size() - cut(count, text_.size())));
}

int CString::Find(char c, int start) const {
    return Find(std::string(1, c).c_str(), start);
}

int CString::Find(LPCSTR text, int start) const {
    if (start < 0 || start > GetLength()) return -1;
    const std::size_t found = tool::find_text(View().substr(cut(start, text_.size())), view(text));
    return found == std::string_view::npos ? -1 : start + static_cast<int>(found);
}

int CString::ReverseFind(char c) const {
    return position(tool::find_last_char(text_, c));
}

int CString::FindOneOf(LPCSTR characters) const {
    for (std::size_t at = 0; at < text_.size();) {
        const std::string_view rest = View().substr(at);
        const std::size_t length = tool::char_length(rest);
        if (tool::find_text(view(characters), rest.substr(0, length)) != std::string_view::npos) return position(at);
        at += length;
    }
    return -1;
}

int CString::Compare(LPCSTR other) const {
    return tool::compare_codes(text_.c_str(), view(other));
}

int CString::CompareNoCase(LPCSTR other) const {
    return tool::compare_codes(tool::lower(text_.c_str()), tool::lower(view(other)));
}

CString& CString::MakeUpper() {
    text_ = tool::upper(text_);
    return *this;
}

CString& CString::MakeLower() {
    text_ = tool::lower(text_);
    return *this;
}

CString& CString::Trim() {
    return Trim(white_space);
}

CString& CString::Trim(char c) {
    return Trim(std::string(1, c).c_str());
}

CString& CString::Trim(LPCSTR characters) {
    return TrimRight(characters).TrimLeft(characters);
}

CString& CString::TrimLeft() {
    return TrimLeft(white_space);
}

CString& CString::TrimLeft(char c) {
    return TrimLeft(std::string(1, c).c_str());
}

CString& CString::TrimLeft(LPCSTR characters) {
    text_.erase(0, unwanted_before(text_, view(characters)));
    return *this;
}

CString& CString::TrimRight() {
    return TrimRight(white_space);
}

CString& CString::TrimRight(char c) {
    return TrimRight(std::string(1, c).c_str());
}

CString& CString::TrimRight(LPCSTR characters) {
    text_.resize(wanted_end(text_, view(characters)));
    return *this;
}

int CString::Replace(char from, char to) {
    return Replace(std::string(1, from).c_str(), std::string(1, to).c_str());
}

int CString::Replace(LPCSTR from, LPCSTR to) {
    const std::string wanted(view(from)), replacement(view(to));
    if (wanted.empty()) return 0;
    std::string result;
    std::string_view rest = text_;
    int count = 0;
    for (std::size_t at; (at = tool::find_text(rest, wanted)) != std::string_view::npos; ++count) {
        result.append(rest.substr(0, at)).append(replacement);
        rest.remove_prefix(at + wanted.size());
    }
    result += rest;
    text_ = std::move(result);
    return count;
}

int CString::Remove(char c) {
    return Replace(std::string(1, c).c_str(), "");
}

int CString::Insert(int index, LPCSTR text) {
    text_.insert(cut(index, text_.size()), std::string(view(text)));
    return GetLength();
}

int CString::Delete(int index, int count) {
    const std::size_t at = cut(index, text_.size());
    text_.erase(at, cut(count, text_.size()));
    return GetLength();
}

void CString::Format(LPCSTR format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = tool::formatted(format, arguments);
    va_end(arguments);
    text_ = std::move(text);
}

void CString::AppendFormat(LPCSTR format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    text_ += tool::formatted(format, arguments);
    va_end(arguments);
}

LPSTR CString::GetBuffer(int length) {
    text_.resize(std::max(text_.size(), cut(length, SIZE_MAX)));
    return text_.data();
}

void CString::ReleaseBuffer(int length) {
    text_.resize(length < 0 ? std::strlen(text_.c_str()) : cut(length, text_.size()));
}

CString operator+(const CString& a, const CString& b) {
    return CString(a) += b;
}

CString operator+(const CString& a, LPCSTR b) {
    return CString(a) += b;
}

CString operator+(LPCSTR a, const CString& b) {
    return CString(a) += b;
}

CString operator+(const CString& a, char b) {
    return CString(a) += b;
}

CString operator+(char a, const CString& b) {
    return CString(a) += b;
}

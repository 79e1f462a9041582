#include "framework/exceptions.h"
#include "framework/text.h"

void CStringArray::SetSize(INT_PTR size) {
    if (size < 0) AfxThrowInvalidArgException();
    items_.resize(static_cast<std::size_t>(size));
}

const CString& CStringArray::GetAt(INT_PTR index) const {
    if (index < 0 || index >= GetSize()) AfxThrowInvalidArgException();
    return items_[static_cast<std::size_t>(index)];
}

CString& CStringArray::ElementAt(INT_PTR index) {
    return const_cast<CString&>(GetAt(index));
}

INT_PTR CStringArray::Add(LPCSTR text) {
    items_.emplace_back(text);
    return GetUpperBound();
}

INT_PTR CStringArray::Append(const CStringArray& other) {
    const INT_PTR first = GetSize();
    const std::vector<CString> added = other.items_;  // `other` may be this list
    items_.insert(items_.end(), added.begin(), added.end());
    return first;
}

void CStringArray::RemoveAt(INT_PTR index, INT_PTR count) {
    if (index < 0 || count < 0 || index > GetSize() || count > GetSize() - index) AfxThrowInvalidArgException();
    items_.erase(items_.begin() + index, items_.begin() + index + count);
}

void CStringArray::InsertAt(INT_PTR index, LPCSTR text, INT_PTR count) {
    if (index < 0 || count <= 0) AfxThrowInvalidArgException();
    const CString item(text);  // `text` may lie in this list
    if (index > GetSize()) SetSize(index);
    items_.insert(items_.begin() + index, static_cast<std::size_t>(count), item);
}

// What a CDC keeps, whatever it draws on.
#pragma once

#include <utility>

#include "framework/drawing.h"
#include "platform/framework/living_handles.h"

namespace tool {

LivingHandles<HDC, CDC>& living_surfaces();

// What was current before; null and no change for an object that cannot be selected.
template <class Object>
Object* select(Object*& current, Object* object) {
    return object && object->Exists() ? std::exchange(current, object) : nullptr;
}

// What was set before; 0 and no change outside first to last.
inline int set_mode(int& current, int mode, int first, int last) {
    return mode >= first && mode <= last ? std::exchange(current, mode) : 0;
}

// Half the font's height a byte.
CSize described_extent(const CFont& font, int count);

// CDC::DrawText by the surface's TextOut and GetTextExtent.
int draw_text(CDC& dc, LPCSTR text, int count, RECT* rect, UINT format);

}  // namespace tool

// Guards: each changes one thing of a surface and puts it back at the end of its scope, so that no path can forget.
#pragma once

#include "framework/drawing.h"

namespace tool {

// A pen, brush or font in use. Declare it behind the object, so that it goes first.
template <class Object>
class Selected {
 public:
    Selected(CDC& dc, Object& object) : dc_(dc), before_(dc.SelectObject(&object)) {}
    ~Selected() {
        if (before_) dc_.SelectObject(before_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

 private:
    CDC& dc_;
    Object* before_;
};

// A setting whose setter returns the one before.
template <class Value, Value (CDC::*set)(Value)>
class Changed {
 public:
    Changed(CDC& dc, Value value) : dc_(dc), before_((dc.*set)(value)) {}
    ~Changed() { (dc_.*set)(before_); }
    Changed(const Changed&) = delete;
    Changed& operator=(const Changed&) = delete;

 private:
    CDC& dc_;
    Value before_;
};

using BackgroundMode = Changed<int, &CDC::SetBkMode>;
using RasterOperation = Changed<int, &CDC::SetROP2>;
using TextColour = Changed<COLORREF, &CDC::SetTextColor>;

}  // namespace tool

// Handles of the objects that live. A handle is never given twice, so that an old one finds nothing. They are small
// numbers, which on Windows no handle of the system's is.
#pragma once

#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace tool {

template <class Handle, class Object>
class LivingHandles {
 public:
    Handle add(Object* object) {
        const std::lock_guard lock(guard_);
        const auto handle = reinterpret_cast<Handle>(++last_);
        objects_[handle] = object;
        return handle;
    }
    // Under a handle of the system's.
    void enter(Handle handle, Object* object) {
        const std::lock_guard lock(guard_);
        std::erase_if(objects_, [object](const auto& entry) { return entry.second == object; });
        objects_[handle] = object;
    }
    // By the object, as its handle may have been overwritten.
    void remove(const Object* object) {
        const std::lock_guard lock(guard_);
        std::erase_if(objects_, [object](const auto& entry) { return entry.second == object; });
    }
    Object* find(Handle handle) const {
        const std::lock_guard lock(guard_);
        const auto found = objects_.find(handle);
        return found == objects_.end() ? nullptr : found->second;
    }

 private:
    mutable std::mutex guard_;
    std::unordered_map<Handle, Object*> objects_;
    std::uintptr_t last_ = 0;
};

}  // namespace tool

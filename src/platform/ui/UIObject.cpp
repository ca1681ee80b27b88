// SPDX-License-Identifier: BSD-3-Clause
// The registry of what the user interface is made of: references count up, so that one of something
// that is gone never means another. User-interface thread only.
#include "platform/ui/UIObject.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

#include "platform/ui/Windows.h"
#include "platform/ui/windows/StandardHandler.h"

namespace platform {

namespace {

struct Registry {
    std::unordered_map<std::uintptr_t, UIObject*> objects;
    std::uintptr_t lastNumber = 0;
};

Registry& TheRegistry() {
    // Never destroyed: objects leave it while the process ends.
    static Registry& registry = *new Registry;
    return registry;
}

} // namespace

UIObject::UIObject(ObjectKind kind, EventTargetRef parent)
    : m_kind(kind), m_number(++TheRegistry().lastNumber), m_target(CreateEventTarget(parent)) {
    TheRegistry().objects.emplace(m_number, this);
    InstallStandardHandler(*this);
}

UIObject::~UIObject() {
    TheRegistry().objects.erase(m_number);
    DisposeEventTarget(m_target);
}

OSStatus UIObject::SetProperty(OSType creator, OSType tag, std::span<const std::byte> data) {
    m_properties.insert_or_assign({ creator, tag },
                                  std::vector<std::byte>(data.begin(), data.end()));
    return kNoErr;
}

OSStatus UIObject::GetProperty(OSType creator, OSType tag, std::span<std::byte> data,
                               std::uint32_t* actualSize) const {
    auto const found = m_properties.find({ creator, tag });
    if (found == m_properties.end())
        return kParamErr;
    std::vector<std::byte> const& value = found->second;
    if (actualSize)
        *actualSize = static_cast<std::uint32_t>(value.size());
    std::copy_n(value.begin(), std::min(value.size(), data.size()), data.begin());
    return kNoErr;
}

OSStatus UIObject::RemoveProperty(OSType creator, OSType tag) {
    return m_properties.erase({ creator, tag }) > 0 ? kNoErr : kParamErr;
}

UIObject* UIObject::Find(const void* reference) {
    auto const& objects = TheRegistry().objects;
    auto const found = objects.find(reinterpret_cast<std::uintptr_t>(reference));
    return found == objects.end() ? nullptr : found->second;
}

UIObject* UIObject::Find(const void* reference, ObjectKind kind) {
    UIObject* const object = Find(reference);
    return object && object->m_kind == kind ? object : nullptr;
}

std::vector<UIObject*> UIObject::All(ObjectKind kind) {
    std::vector<UIObject*> all;
    for (auto const& [number, object] : TheRegistry().objects) {
        if (object->m_kind == kind)
            all.push_back(object);
    }
    std::ranges::sort(all, {}, &UIObject::m_number);
    return all;
}

EventTargetRef GetHIObjectEventTarget(HIObjectRef object) {
    UIObject const* const found = UIObject::Find(object);
    return found ? found->Target() : nullptr;
}

} // namespace platform

// SPDX-License-Identifier: BSD-3-Clause
// The registry of what the user interface is made of: references count up, so that one of something
// that is gone never means another. User-interface thread only.
#include "platform/ui/UIObject.h"

#include <algorithm>
#include <unordered_map>

#include "platform/ui/windows/Input.h"

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

void UIObject::SetProperty(OSType creator, OSType tag, void* value) {
    m_properties[{ creator, tag }] = value;
}

void* UIObject::Property(OSType creator, OSType tag) const {
    const auto found = m_properties.find({ creator, tag });
    return found == m_properties.end() ? nullptr : found->second;
}

UIObject* UIObject::Find(const void* reference) {
    const auto& objects = TheRegistry().objects;
    const auto found = objects.find(reinterpret_cast<std::uintptr_t>(reference));
    return found == objects.end() ? nullptr : found->second;
}

UIObject* UIObject::Find(const void* reference, ObjectKind kind) {
    UIObject* const object = Find(reference);
    return object && object->m_kind == kind ? object : nullptr;
}

EventTargetRef UIObject::TargetOf(const void* reference) {
    const UIObject* const object = Find(reference);
    return object ? object->m_target : nullptr;
}

std::vector<UIObject*> UIObject::All(ObjectKind kind) {
    std::vector<UIObject*> all;
    for (const auto& [number, object] : TheRegistry().objects)
        if (object->m_kind == kind)
            all.push_back(object);
    std::ranges::sort(all, {}, &UIObject::m_number);
    return all;
}

} // namespace platform

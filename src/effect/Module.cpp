// SPDX-License-Identifier: BSD-3-Clause
// What only the loadable module has: its bundle is known to the platform while it is loaded.
#include "effect/EntryPoint.h"
#include "platform/CoreFoundation.h"

namespace {

const void* OwnCode() {
    return reinterpret_cast<const void*>(&EntryPoint);
}

class BundleRegistration {
public:
    // A module outside a bundle still renders; its texts are their keys then.
    BundleRegistration() { platform::CFBundleRegister(OwnCode()); }
    BundleRegistration(const BundleRegistration&) = delete;
    BundleRegistration& operator=(const BundleRegistration&) = delete;
    ~BundleRegistration() { platform::CFBundleUnregister(OwnCode()); }
};

const BundleRegistration s_registration;

} // namespace

// The module format expects a main; a host never calls it.
int main() {
    return 0;
}

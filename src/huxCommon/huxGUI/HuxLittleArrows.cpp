// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxLittleArrows.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "huxCommon/huxGUI/HuxEditText.h"
#include "huxCommon/huxUtility/NumberText.h"

using namespace platform;

namespace {

using Limits = std::numeric_limits<std::int32_t>;
constexpr long kMaxDecimals = 9; // a whole number of such parts still fits into the value
constexpr double kUnsignedOrigin = 2147483648.0;
constexpr double kUnsignedMax = 4294967295.0;

std::int32_t Nearest(double value) {
    return static_cast<std::int32_t>(
        std::clamp<long>(Truncated(std::round(value)), Limits::min(), Limits::max()));
}

} // namespace

// The control ------------------------------------------------------------------------------------

OSStatus HuxLittleArrows::Attach(ControlRef control) {
    const OSStatus status = HuxControlImpl::Attach(control);
    SetTimerInterval(m_dTimerInterval);
    return status;
}

void HuxLittleArrows::SetTimerInterval(double seconds) {
    m_dTimerInterval = seconds;
    if (seconds > 0)
        Do(&Control::SetRepeatInterval, seconds);
}

void HuxLittleArrows::SetEditControl(HuxEditText* edit, long decimals, unsigned char sendNotify,
                                     unsigned char changeFocus) {
    m_pEdit = edit;
    m_refEdit = edit ? edit->GetControlRef() : nullptr;
    m_nSmall = static_cast<std::int32_t>(std::clamp<long>(decimals, 0, kMaxDecimals));
    m_fSendChangedEditNotify = sendNotify != 0;
    m_fChangedEditFocus = changeFocus != 0;
    m_refShown = HuxString();
    SetRange();
    FollowEditControl();
}

HuxEditText* HuxLittleArrows::GetEditControl() const {
    return m_pEdit && FromControl(m_refEdit) == m_pEdit ? m_pEdit : nullptr;
}

// Numbers ----------------------------------------------------------------------------------------

// The control's value has 31 bits and a sign. Where a field has unsigned numbers beyond that, the value
// counts from the middle of theirs, so that the whole of 32 bits is within reach.
void HuxLittleArrows::SetRange() {
    m_dScale = 1;
    m_dOrigin = 0;
    const HuxEditText* const edit = GetEditControl();
    if (!edit)
        return;
    m_dScale = edit->IsReal() ? std::pow(10.0, m_nSmall) : 1.0;
    double low = edit->GetMin() * m_dScale, high = edit->GetMax() * m_dScale;
    if (!edit->HasRange()) {
        const bool isSigned = edit->GetType() == HuxEditText::kSignedReal ||
                              edit->GetType() == HuxEditText::kSignedInteger;
        low = isSigned ? Limits::min() : 0;
        high = isSigned ? Limits::max() : kUnsignedMax;
    }
    m_dOrigin = low >= 0 && high > Limits::max() ? kUnsignedOrigin : 0;
    SetMinimum(Nearest(std::ceil(low - m_dOrigin)));
    SetMaximum(Nearest(std::floor(high - m_dOrigin)));
}

double HuxLittleArrows::GetNumber() const {
    return (GetValue() + m_dOrigin) / m_dScale;
}

void HuxLittleArrows::SetNumber(double number) {
    SetValue(Nearest(number * m_dScale - m_dOrigin));
}

// Steps ------------------------------------------------------------------------------------------

OSStatus HuxLittleArrows::InstallSelf(EventTargetRef target) {
    constexpr EventTypeSpec kHit { kEventClassControl, kEventControlHit };
    return InstallCarbonEventHandler(target, 1, &kHit);
}

OSStatus HuxLittleArrows::HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) {
    if (GetEventClass(event) != kEventClassControl || GetEventKind(event) != kEventControlHit)
        return kEventNotHandledErr;
    m_nTrackPartCode = kControlNoPart;
    GetEventParameter(event, kEventParamControlPart, kTypeControlPartCode, nullptr,
                      sizeof m_nTrackPartCode, nullptr, &m_nTrackPartCode);
    FollowEditControl();
    return IncrementValueAndCommand() ? kNoErr : kEventNotHandledErr;
}

void HuxLittleArrows::Step() {
    const std::int64_t step =
        m_nTrackPartCode == kControlUpButtonPart ? m_nIncrement : -std::int64_t { m_nIncrement };
    SetValue(static_cast<std::int32_t>(
        std::clamp<std::int64_t>(GetValue() + step, GetMinimum(), GetMaximum())));
}

bool HuxLittleArrows::IncrementValueAndCommand() {
    const Alive alive(*this);
    Step();
    HuxEditText* const edit = GetEditControl();
    const bool changed = edit && ShowInEditControl();
    const WindowRef owner = edit ? edit->GetOwner() : nullptr;
    if (changed && m_fSendChangedEditNotify && owner)
        HuxCarbonEvent::SendEventCommand(UIObject::TargetOf(owner), m_refEdit, edit->GetCommandID(),
                                         kEditTextChanged, nullptr);
    if (!alive)
        return true;
    Window* const window = m_fChangedEditFocus && GetEditControl() ? Window::Find(owner) : nullptr;
    if (window)
        window->SetKeyboardFocus(Control::Find(m_refEdit));
    if (alive)
        SendCommand(m_nTrackPartCode, nullptr);
    return true;
}

// Writes the number into the field when it has another one, and gives whether the user sees another
// text. The owner is told by the step alone.
bool HuxLittleArrows::ShowInEditControl() {
    HuxEditText& edit = *GetEditControl();
    const auto silence = edit.Silence();
    HuxString before;
    edit.GetText(before, true);
    const double number = GetNumber();
    double real = 0;
    long integer = 0; // whole numbers of 32 bits, signed or not
    if (edit.IsReal() && !(edit.GetDouble(real, false) && real == number))
        edit.SetDouble(number);
    else if (!edit.IsReal() && !(edit.GetInt(integer, false) && integer == Truncated(number)))
        edit.SetSInt(Truncated(number));
    edit.GetText(m_refShown, true);
    return !(m_refShown == before);
}

// The user may have typed since the last step. While the field shows what that step wrote, the stepper
// knows better: it may stand between two numbers of the field's format.
void HuxLittleArrows::FollowEditControl() {
    double number = 0;
    HuxString shown;
    const HuxEditText* const edit = GetEditControl();
    if (edit && edit->GetText(shown, true) && !(shown == m_refShown) && edit->GetNumber(number))
        SetNumber(number);
}

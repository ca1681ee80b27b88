// SPDX-License-Identifier: BSD-3-Clause
// What reaches the field: keys before they type, changes that no key made, and the focus.
#include "huxCommon/huxGUI/HuxEditText.h"

#include <string>
#include <utility>

#include "platform/ui/Cursors.h"

using namespace platform;

namespace {

// Character codes of keys.
constexpr short kHomeKey = 1, kEnterKey = 3, kEndKey = 4, kBackspaceKey = 8, kTabKey = 9,
                kPageUpKey = 11, kPageDownKey = 12, kReturnKey = 13, kEscapeKey = 27, kLeftKey = 28,
                kDownKey = 31, kDeleteKey = 127;

// A comma is refused as a key of a file name and may be pasted: names that come from elsewhere have
// some, and are names all the same.
constexpr std::string_view kNoFileNameKeys = "/;,\"*?<>|";
constexpr std::string_view kNoPathKeys = "\\/;:,\"*?<>|";
constexpr const char* kNotInFileNames = "/;\"*?<>|\t";
constexpr const char* kNotInPathlessNames = "\\/;:,\"*?<>|\t";
constexpr const char* kLineEnds = "\n\r";

bool IsReturn(short key) {
    return key == kReturnKey || key == kEnterKey;
}

bool IsDelete(short key) {
    return key == kBackspaceKey || key == kDeleteKey;
}

bool IsDigit(short key) {
    return key >= '0' && key <= '9';
}

bool IsOneOf(short key, std::string_view characters) {
    return key > 0 && key < 128 && characters.find(static_cast<char>(key)) != characters.npos;
}

std::size_t UnitsOf(char32_t character) {
    return character > 0xFFFF ? 2 : 1;
}

// How many of the text's characters fit into that many UTF-16 units; count gets the units of all.
std::size_t CharactersWithin(const std::u32string& text, std::size_t limit, std::size_t* count) {
    std::size_t characters = 0;
    *count = 0;
    for (const char32_t character : text) {
        *count += UnitsOf(character);
        if (*count <= limit)
            ++characters;
    }
    return characters;
}

} // namespace

template <class Work>
void HuxEditText::RunGuarded(ControlRef control, Work work) {
    auto* const field = dynamic_cast<HuxEditText*>(FromControl(control));
    if (!field)
        return;
    const Alive alive(*field);
    try {
        work(*field);
    } catch (HuxException& error) {
        if (alive)
            field->HandleErrorHuxException(error);
    } catch (std::bad_alloc& error) {
        if (alive)
            field->HandleErrorBadAlloc(error);
    } catch (...) {
        if (alive)
            field->HandleErrorOther();
    }
}

// Keys -------------------------------------------------------------------------------------------

ControlKeyFilterResult HuxEditText::s_KeyFilter(ControlRef control, std::int16_t* keyCode,
                                                std::int16_t* charCode, std::uint16_t* modifiers) {
    ControlKeyFilterResult verdict = kControlKeyFilterPassKey;
    RunGuarded(control, [&](HuxEditText& field) {
        verdict = field.FilterKey(keyCode, charCode, modifiers);
    });
    return verdict;
}

ControlKeyFilterResult HuxEditText::FilterKey(short* keyCode, short* charCode,
                                              unsigned short* modifiers) {
    const short key = *charCode;
    const bool moves = IsNavigationKey(key) || IsDelete(key);
    const bool isReported = m_fOnReturnParentNotify && IsReturn(key);
    bool ofType = true;
    if (key != kEscapeKey && IsFull()) {
        long start = 0, end = 0;
        if (!moves && !isReported && GetSelection(start, end) && start == end)
            return kControlKeyFilterBlockKey;
        ofType = !moves;
    }
    const ControlKeyFilterResult verdict =
        ofType ? KeyFilter(m_hctrl, keyCode, charCode, modifiers) : kControlKeyFilterPassKey;
    if (verdict != kControlKeyFilterBlockKey)
        PostCommand(kEditTextChanged);
    if (isReported)
        PostCommand(kEditTextReturn);
    if (key == kEscapeKey)
        PostCommand(kEditTextEscape);
    return verdict;
}

bool HuxEditText::IsFull() const {
    HuxString text;
    if (m_nLimitText <= 0 || !GetText(text))
        return false;
    std::size_t count = 0;
    CharactersWithin(text.GetCharacters(), 0, &count);
    return count >= static_cast<std::size_t>(m_nLimitText);
}

bool HuxEditText::IsNavigationKey(short charCode) const {
    switch (charCode) {
    case kHomeKey:
    case kEndKey:
    case kTabKey:
    case kPageUpKey:
    case kPageDownKey:
    case kEscapeKey:
        return true;
    default:
        return charCode >= kLeftKey && charCode <= kDownKey;
    }
}

ControlKeyFilterResult HuxEditText::KeyFilter(ControlRef, short*, short* charCode,
                                              unsigned short*) {
    return IsDelete(*charCode) || IsKeyOfType(*charCode) ? kControlKeyFilterPassKey
                                                         : kControlKeyFilterBlockKey;
}

bool HuxEditText::IsKeyOfType(short key) const {
    switch (m_nType) {
    case kFreeText:
        return !(m_fOnReturnParentNotify && IsReturn(key));
    case kFileName:
        return !IsReturn(key) && !IsOneOf(key, kNoFileNameKeys);
    case kPathlessName:
        return !IsReturn(key) && !IsOneOf(key, kNoPathKeys);
    case kDigitsWithPlus:
        return IsDigit(key) || key == '+';
    case kReserved:
        return true;
    default:
        break;
    }
    const bool hasMinus = m_nType == kSignedReal || m_nType == kSignedInteger;
    if (key == '-' && hasMinus)
        return CheckInputMinus();
    if (key == '.' && IsReal())
        return CheckInputDouble();
    return IsDigit(key) || IsNavigationKey(key);
}

bool HuxEditText::CheckInputMinus() const {
    long start = 0, end = 0;
    HuxString text;
    return GetSelection(start, end) && GetText(text) && start == 0 &&
           text.GetUTF8().find('-') == std::string_view::npos;
}

// A number never begins with its point, and a point that the key would replace still counts: what is
// typed is a number at every moment.
bool HuxEditText::CheckInputDouble() const {
    long start = 0, end = 0;
    HuxString text;
    return GetSelection(start, end) && GetText(text) && start != 0 &&
           text.GetUTF8().find('.') == std::string_view::npos;
}

// Other changes ----------------------------------------------------------------------------------

void HuxEditText::s_Validation(ControlRef control) {
    RunGuarded(control, [control](HuxEditText& field) { field.Validation(control); });
}

void HuxEditText::GetValidationChars(HuxMutableString& valid, HuxMutableString& invalid) const {
    static constexpr const char* kNumbers[] = { "0123456789-.", "0123456789.", "0123456789-",
                                                "0123456789" };
    valid.Clear();
    invalid.Clear();
    if (m_nType != kFreeText || m_fOnReturnParentNotify)
        invalid.Append(HuxString::FromUTF8(kLineEnds));
    if (m_nType == kFileName)
        invalid.Append(HuxString::FromUTF8(kNotInFileNames));
    if (m_nType == kPathlessName)
        invalid.Append(HuxString::FromUTF8(kNotInPathlessNames));
    if (!IsReal() && !IsInteger())
        return;
    valid.Append(HuxString::FromUTF8(kNumbers[m_nType - kSignedReal]));
    invalid.Append(HuxString::FromUTF8("\t "));
}

void HuxEditText::Validation(ControlRef) {
    HuxString whole;
    if (!GetText(whole, true))
        return;
    const HuxString before = WithoutSuffix(whole);
    HuxMutableString text = before, valid, invalid;
    GetValidationChars(valid, invalid);
    if (!valid.IsEmpty())
        text.KeepCharacters(valid);
    if (!invalid.IsEmpty())
        text.RemoveCharacters(invalid);
    if (m_nLimitText > 0) {
        std::size_t count = 0;
        text.Truncate(
            CharactersWithin(text.GetCharacters(), static_cast<std::size_t>(m_nLimitText), &count));
    }
    if (!(text == before))
        SetText(text);
    if (!m_fSilent)
        SendCommand(kEditTextChanged, nullptr);
}

// The focus --------------------------------------------------------------------------------------

bool HuxEditText::HasFocus() const {
    const Control* const control = Control::Find(m_hctrl);
    return control && control->Owner().KeyboardFocus() == control;
}

// A disabled field is not checked any more when the focus leaves it.
OSStatus HuxEditText::Disable() {
    const Alive alive(*this);
    if (!m_fFocusProcess && HasFocus()) {
        const WhileSet process(*this, m_fFocusProcess, true);
        CheckControlValue();
    }
    return alive ? HuxControlImpl::Disable() : kErrInvalidControl;
}

OSStatus HuxEditText::InstallSelf(EventTargetRef target) {
    constexpr EventTypeSpec kEvents[] = { { kEventClassControl, kEventControlSetCursor },
                                          { kEventClassControl, kEventControlSetFocusPart } };
    return InstallCarbonEventHandler(target, 2, kEvents);
}

OSStatus HuxEditText::HandleEventCurrentSelf(EventHandlerCallRef call, EventRef event) {
    if (GetEventClass(event) != kEventClassControl)
        return kEventNotHandledErr;
    switch (GetEventKind(event)) {
    case kEventControlSetCursor:
        return HandleSetCursor();
    case kEventControlSetFocusPart:
        return HandleSetFocusPart(call, event);
    default:
        return kEventNotHandledErr;
    }
}

OSStatus HuxEditText::HandleSetCursor() {
    return IsVisible() && IsEnabled() ? SetThemeCursor(kThemeIBeamCursor) : kEventNotHandledErr;
}

OSStatus HuxEditText::HandleSetFocusPart(EventHandlerCallRef call, EventRef event) {
    std::uint8_t everything = 1;
    GetEventParameter(event, kEventParamControlFocusEverything, kTypeBoolean, nullptr,
                      sizeof everything, nullptr, &everything);
    if (everything)
        return kEventNotHandledErr;
    const auto notification = [event] {
        ControlPartCode part = kControlNoPart;
        GetEventParameter(event, kEventParamControlPart, kTypeControlPartCode, nullptr, sizeof part,
                          nullptr, &part);
        return part == kControlNoPart ? kEditTextUnfocus : kEditTextFocus;
    };
    return ChangeFocus(call, event, notification);
}

OSStatus HuxEditText::s_WindowFocus(EventHandlerCallRef call, EventRef event, void* userData) {
    return static_cast<HuxEditText*>(userData)->WindowFocus(call, event);
}

OSStatus HuxEditText::WindowFocus(EventHandlerCallRef call, EventRef event) {
    if (!HasFocus())
        return kEventNotHandledErr;
    return ChangeFocus(call, event, [event] {
        return GetEventKind(event) == kEventWindowFocusAcquired ? kEditTextFocus : kEditTextUnfocus;
    });
}

// Owners may answer what they are told by moving the focus on, which must not start this again. What
// is told is asked for last: the handlers after this one may choose another part.
template <class Notification>
OSStatus HuxEditText::ChangeFocus(EventHandlerCallRef call, EventRef event,
                                  Notification notification) {
    if (m_fFocusProcess)
        return kEventNotHandledErr;
    const Alive alive(*this);
    const WhileSet process(*this, m_fFocusProcess, true);
    CheckControlValue();
    if (!alive)
        return kEventNotHandledErr;
    const OSStatus result = CallNextEventHandler(call, event);
    if (alive)
        SendCommand(notification(), nullptr);
    return result;
}

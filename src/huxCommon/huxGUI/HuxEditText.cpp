// SPDX-License-Identifier: BSD-3-Clause
// The field's kind, its text and numbers, and their checks.
#include "huxCommon/huxGUI/HuxEditText.h"

#include <algorithm>
#include <limits>

#include "huxCommon/huxUtility/NumberText.h"

using namespace platform;

namespace {

constexpr std::string_view kDefaultFormat = "%.1f";
constexpr long kFileNameLimit = 1024, kPathlessNameLimit = 255, kUnlimited = -1;
constexpr std::int16_t kBeepDuration = 1;

int Position(long value) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

} // namespace

HuxEditText::HuxEditText() : m_uppKeyFilter(s_KeyFilter), m_uppValidation(s_Validation) {
    m_huxWindowEventHandler.SetHandler(this, s_WindowFocus);
}

HuxEditText::~HuxEditText() {
    HuxEditText::Detach();
}

// The control ------------------------------------------------------------------------------------

OSStatus HuxEditText::Attach(ControlRef control) {
    if (const OSStatus status = HuxControlImpl::Attach(control); status != kNoErr || !control)
        return status;
    constexpr EventTypeSpec kFocusEvents[] = { { kEventClassWindow, kEventWindowFocusAcquired },
                                               { kEventClassWindow, kEventWindowFocusRelinquish } };
    if (!m_huxWindowEventHandler.IsInstalled())
        m_huxWindowEventHandler.InstallCarbonEventHandler(UIObject::TargetOf(GetOwner()), 2,
                                                          kFocusEvents);
    SetScript();
    return SetHooks(m_uppKeyFilter, m_uppValidation);
}

void HuxEditText::Detach() {
    SetHooks(nullptr, nullptr);
    m_huxWindowEventHandler.Remove();
    m_fFocusProcess = false;
    HuxControlImpl::Detach();
}

OSStatus HuxEditText::SetHooks(ControlKeyFilterProc filter,
                               ControlEditTextValidationProc validate) {
    EditField* const field = EditField::Find(m_hctrl);
    if (!field)
        return kErrInvalidControl;
    field->keyFilter = filter;
    field->validation = validate;
    return kNoErr;
}

// What the field is for --------------------------------------------------------------------------

void HuxEditText::SetType(bool isReal, double max, double min, double def, bool onReturnNotify,
                          const char* format) {
    m_dMax = max;
    m_dMin = min;
    m_dDefault = std::min(std::max(def, min), max);
    m_fSigned = min < 0;
    if (format)
        SetFormat(format);
    const Type real = m_fSigned ? kSignedReal : kUnsignedReal;
    const Type integer = m_fSigned ? kSignedInteger : kUnsignedInteger;
    SetType(isReal ? real : integer, onReturnNotify);
}

void HuxEditText::SetType(bool isReal, double max, double min, double def, bool onReturnNotify,
                          CFStringRef format) {
    if (format)
        SetFormat(format);
    SetType(isReal, max, min, def, onReturnNotify);
}

void HuxEditText::SetType(long type, bool onReturnNotify) {
    m_nType = static_cast<std::int32_t>(std::clamp<long>(type, kFreeText, kDigitsWithPlus));
    m_fOnReturnParentNotify = onReturnNotify;
    if (!IsValid())
        return;
    SetLimit();
    SetScript();
}

void HuxEditText::SetScript() {
    Do(&EditField::SetRomanScript, m_nType >= kSignedReal);
}

void HuxEditText::SetLimit() {
    if (m_nType == kFileName)
        SetLimitText(kFileNameLimit);
    else if (m_nType == kPathlessName)
        SetLimitText(kPathlessNameLimit);
    else if (IsReal() || IsInteger())
        SetLimitText(kUnlimited);
}

void HuxEditText::SetLimitText(long count) {
    using Limits = std::numeric_limits<std::int32_t>;
    m_nLimitText = static_cast<std::int32_t>(std::clamp<long>(count, kUnlimited, Limits::max()));
}

void HuxEditText::SetSuffix(CFBundleRef bundle, CFStringRef key) {
    m_refSuffix = HuxString::Localized(bundle, HuxString(key).GetUTF8());
}

// Text -------------------------------------------------------------------------------------------

bool HuxEditText::GetText(HuxString& text, bool whole) const {
    if (!GetControlText(text))
        return false;
    if (whole || m_refSuffix.IsEmpty())
        return true;
    const std::string_view all = text.GetUTF8();
    text = HuxString::FromUTF8(all.substr(0, all.find(' ')));
    return true;
}

bool HuxEditText::GetText(unsigned char* pascalText, bool whole) const {
    HuxString text;
    if (!GetText(text, whole))
        return false;
    text.GetPascalString(pascalText);
    return true;
}

bool HuxEditText::GetText(char* buffer, long size, bool whole) const {
    HuxString text;
    if (size <= 0 || !GetText(text, whole))
        return false;
    text.GetCString(buffer, static_cast<std::size_t>(size));
    return true;
}

bool HuxEditText::GetText(CFStringRef* string, bool whole) const {
    HuxString text;
    if (!GetText(text, whole))
        return false;
    *string = text.GetCFString();
    CFRetain(*string);
    return true;
}

void HuxEditText::SetText(const HuxString& text) {
    SetControlText(WithSuffix(text));
}

bool HuxEditText::GetTitleText(char* text, long size) const {
    return GetText(text, size, true);
}

void HuxEditText::SetTitleText(const char* text) {
    SetText(text);
}

HuxString HuxEditText::WithSuffix(const HuxString& text) const {
    if (m_refSuffix.IsEmpty())
        return text;
    HuxMutableString whole = text;
    whole.Append(HuxString::FromUTF8(" "));
    whole.Append(m_refSuffix);
    return whole;
}

// Unlike the part before the first blank, this loses nothing of what was pasted.
HuxString HuxEditText::WithoutSuffix(const HuxString& text) const {
    if (m_refSuffix.IsEmpty())
        return text;
    const std::string_view whole = text.GetUTF8();
    const HuxString ending = WithSuffix(HuxString());
    if (whole.ends_with(ending.GetUTF8()))
        return HuxString::FromUTF8(whole.substr(0, whole.size() - ending.GetUTF8().size()));
    return text == m_refSuffix ? HuxString() : text;
}

bool HuxEditText::GetSelection(long& start, long& end) const {
    const EditField* const field = EditField::Find(m_hctrl);
    if (!field)
        return false;
    const EditField::Span selection = field->Selection();
    start = selection.start;
    end = selection.end;
    return true;
}

void HuxEditText::SetSelection(long start, long end) {
    Do(&EditField::Select, { Position(start), Position(end) });
}

// Numbers ----------------------------------------------------------------------------------------

bool HuxEditText::GetNumberText(HuxString& text) const {
    return GetText(text) && !text.IsEmpty();
}

// What 32 bits hold, as the records hold it that numbers go into.
long HuxEditText::Integer(const HuxString& text) const {
    constexpr long kLow = std::numeric_limits<std::int32_t>::min();
    constexpr long kHigh = std::numeric_limits<std::int32_t>::max();
    constexpr long kHighUnsigned = std::numeric_limits<std::uint32_t>::max();
    return std::clamp(ParseInteger(text.GetUTF8()), kLow,
                      m_nType == kUnsignedInteger ? kHighUnsigned : kHigh);
}

bool HuxEditText::GetInt(long& value, bool report) {
    HuxString text;
    if (!GetNumberText(text)) {
        value = Truncated(m_dDefault);
        if (report)
            Correct(HuxString::FromInteger(value));
        return false;
    }
    long number = Integer(text);
    if ((IsReal() || IsInteger()) && !CheckRange(number, report))
        return false;
    value = number;
    return true;
}

bool HuxEditText::GetInt(unsigned long& value, bool report) {
    auto number = static_cast<long>(value);
    const bool valid = GetInt(number, report);
    value = static_cast<unsigned long>(number);
    return valid;
}

bool HuxEditText::GetDouble(double& value, bool report) {
    HuxString text;
    if (!GetNumberText(text)) {
        value = m_dDefault;
        if (report)
            Correct(RealText(value, HuxString()));
        return false;
    }
    double number = ParseDouble(text.GetUTF8());
    if ((IsReal() || IsInteger()) && !CheckRange(number, report))
        return false;
    value = number;
    return true;
}

bool HuxEditText::GetNumber(double& value) const {
    HuxString text;
    if (!GetNumberText(text))
        return false;
    value = ParseDouble(text.GetUTF8());
    if (HasRange())
        value = std::max(m_dMin, std::min(value, m_dMax));
    return true;
}

// Negative numbers come here as well, from corrections of signed fields: as long as a number is seen as
// signed while it becomes text, both are right.
void HuxEditText::SetInt(unsigned long value) {
    SetSInt(static_cast<long>(value));
}

void HuxEditText::SetSInt(long value) {
    SetText(HuxString::FromInteger(value));
}

void HuxEditText::SetDouble(double value, const char* format) {
    SetText(RealText(value, HuxString(format)));
}

HuxString HuxEditText::RealText(double value, const HuxString& format) const {
    const HuxString& chosen = IsReal() ? m_refFormat : format;
    return HuxString::FromUTF8(
        FormatDouble(chosen.IsEmpty() ? kDefaultFormat : chosen.GetUTF8(), value));
}

// Checks -----------------------------------------------------------------------------------------

bool HuxEditText::CheckRange(long& value, bool report) {
    const long low = Truncated(m_dMin), high = Truncated(m_dMax);
    if (!HasRange() || (value >= low && value <= high))
        return true;
    value = value > high ? high : low;
    if (report)
        Correct(HuxString::FromInteger(value));
    return false;
}

bool HuxEditText::CheckRange(double& value, bool report) {
    if (!HasRange())
        return true;
    if (value > m_dMax || value < m_dMin) {
        value = value > m_dMax ? m_dMax : m_dMin;
        if (report)
            Correct(RealText(value, m_refFormat));
        return false;
    }
    return !report || !IsReal() || ShowRounded(value);
}

// The value becomes what the field shows.
bool HuxEditText::ShowRounded(double& value) {
    const HuxString rounded = RealText(value, m_refFormat);
    HuxString shown;
    if (!GetText(shown, true) || shown == WithSuffix(rounded))
        return true;
    value = ParseDouble(rounded.GetUTF8());
    Tell(rounded);
    return true;
}

bool HuxEditText::CheckControlValue() {
    if (!IsEnabled() || !IsVisible() || !m_fAutoCheck)
        return true;
    const Alive alive(*this);
    if (CheckValueOfType())
        return true;
    if (alive && !m_fFocusProcess)
        SetSelection(0, -1);
    return false;
}

bool HuxEditText::CheckValueOfType() {
    const Alive alive(*this);
    if (m_nType == kFileName)
        return true;
    if (IsInteger()) {
        long value = 0;
        if (!GetInt(value, true))
            return false;
        SetInt(static_cast<unsigned long>(value));
        return true;
    }
    if (IsReal()) {
        double value = 0;
        return GetDouble(value, true) && (!alive || GetDouble(value, false));
    }
    HuxString text;
    if (!GetText(text))
        return false;
    SetText(text);
    return true;
}

// Writes a legal value over one that is not. The field may be gone afterwards.
void HuxEditText::Correct(const HuxString& text) {
    SysBeep(kBeepDuration);
    Tell(text);
}

// Writes the text and tells the owner, once. The field may be gone afterwards.
void HuxEditText::Tell(const HuxString& text) {
    {
        const auto silence = Silence();
        SetText(text);
    }
    SendCommand(kEditTextChanged, nullptr);
}

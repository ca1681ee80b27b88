// SPDX-License-Identifier: BSD-3-Clause
// An edit field for one kind of text: free text, a file name or a number with a range, a default, a
// unit behind it and a format. It refuses keys that do not belong to the kind, cleans what is pasted or
// composed, corrects the value when the focus leaves, and tells its owner by its command, with one of
// kEditText... as the command's value.
//
// Lengths, limits and selections count UTF-16 units; no character is ever cut in two.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxCarbonEventPatcherT.h"
#include "huxCommon/huxGUI/HuxControlImpl.h"

// What the owner is told. Sent while a change by others than the keyboard is still in hand, posted for
// keys, which have not typed yet when they are filtered.
inline constexpr long kEditTextChanged = 1;
inline constexpr long kEditTextReturn = 2; // Return or Enter in a field that reports them
inline constexpr long kEditTextEscape = 3;
inline constexpr long kEditTextFocus = 4;
inline constexpr long kEditTextUnfocus = 5;

class HuxEditText : public HuxControlImpl {
public:
    enum Type : std::int32_t {
        kFreeText = 0,
        kFileName = 1,
        kPathlessName = 2, // a name without the characters that paths are made of
        kSignedReal = 3,
        kUnsignedReal = 4,
        kSignedInteger = 5,
        kUnsignedInteger = 6,
        kReserved = 7,
        kDigitsWithPlus = 8,
    };

    HuxEditText();
    ~HuxEditText() override;

    platform::OSStatus Attach(platform::ControlRef control) override;
    void Detach() override;
    platform::OSStatus Disable() override;
    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

    // What the field is for -------------------------------------------------------------------------

    // A number; signed when min is below 0. Mind the order: max, min, default. With all three 0 every
    // number is in range. format says how real numbers are shown (see FormatDouble); null keeps the
    // one that is set, and none counts as "%.1f".
    void SetType(bool isReal, double max, double min, double def, bool onReturnNotify,
                 const char* format = nullptr);
    void SetType(bool isReal, double max, double min, double def, bool onReturnNotify,
                 platform::CFStringRef format);
    // onReturnNotify: Return and Enter are told to the owner and not typed.
    void SetType(long type, bool onReturnNotify);
    // The unit that stands behind the value, after a blank; empty for none.
    void SetSuffix(const char* suffix) { m_refSuffix = HuxString(suffix); }
    void SetSuffix(platform::CFStringRef suffix) { m_refSuffix = HuxString(suffix); }
    void SetSuffix(platform::CFBundleRef bundle, platform::CFStringRef key);
    void SetFormat(const char* format) { m_refFormat = HuxString(format); }
    void SetFormat(platform::CFStringRef format) { m_refFormat = HuxString(format); }
    void SetLimit();               // the type's own
    void SetLimitText(long count); // not positive: unlimited
    void SetAutoCheck(bool autoCheck) { m_fAutoCheck = autoCheck; }

    std::int32_t GetType() const { return m_nType; }
    bool IsReal() const { return m_nType == kSignedReal || m_nType == kUnsignedReal; }
    bool IsInteger() const { return m_nType == kSignedInteger || m_nType == kUnsignedInteger; }
    double GetMin() const { return m_dMin; }
    double GetMax() const { return m_dMax; }
    bool HasRange() const { return m_dMin != 0 || m_dMax != 0 || m_dDefault != 0; }

    // What is in it ---------------------------------------------------------------------------------

    // The part before the first blank when there is a suffix, everything with whole. False when it
    // cannot be read. Bytes are in the application's text encoding, cut to whole characters.
    bool GetText(unsigned char* pascalText, bool whole = false) const; // 256 bytes
    bool GetText(char* text, long size, bool whole = false) const;
    bool GetText(platform::CFStringRef* text, bool whole = false) const; // the caller's count
    bool GetText(HuxString& text, bool whole = false) const;
    // Written with the suffix. As after every change, the text is cleaned and kEditTextChanged sent:
    // the field may be gone afterwards. This holds for all that follows, too.
    void SetText(const unsigned char* pascalText) { SetText(HuxString(pascalText)); }
    void SetText(const char* text) { SetText(HuxString(text)); }
    void SetText(platform::CFStringRef text) { SetText(HuxString(text)); }
    void SetText(const HuxString& text);

    // An empty field gives the default, and false; a number out of range leaves value as it is, and
    // gives false. With report the field is corrected, the user hears it and the owner is told.
    bool GetInt(long& value, bool report);
    bool GetInt(unsigned long& value, bool report);
    bool GetDouble(double& value, bool report);
    // The number moved into the range, whatever the type, and nothing is reported. False when empty.
    bool GetNumber(double& value) const;
    void SetInt(unsigned long value);
    void SetSInt(long value);
    // Fields for real numbers have a format of their own, and ignore this one; null is "%.1f".
    void SetDouble(double value, const char* format = nullptr);

    bool GetSelection(long& start, long& end) const;
    void SetSelection(long start, long end); // end -1: to the end

    // True when the value is in the range; it is moved there, with report in the field as well.
    bool CheckRange(long& value, bool report);
    bool CheckRange(double& value, bool report);
    bool CheckInputDouble() const; // '.' may be typed now
    bool CheckInputMinus() const;  // '-' may be typed now
    bool CheckControlValue() override;

    // While what this gives lives, changes do not tell the owner; whoever makes them does.
    [[nodiscard]] platform::WhileSet<bool> Silence() { return { *this, m_fSilent, true }; }

    // Hooks -----------------------------------------------------------------------------------------

    virtual bool IsNavigationKey(short charCode) const;
    // Whether the type lets the key through.
    virtual platform::ControlKeyFilterResult KeyFilter(platform::ControlRef control, short* keyCode,
                                                       short* charCode, unsigned short* modifiers);
    // What a text may have alone (empty: anything), and what it may not have.
    virtual void GetValidationChars(HuxMutableString& valid, HuxMutableString& invalid) const;
    virtual void Validation(platform::ControlRef control);
    virtual bool GetTitleText(char* text, long size) const;
    virtual void SetTitleText(const char* text);

private:
    static platform::ControlKeyFilterResult s_KeyFilter(platform::ControlRef control,
                                                        std::int16_t* keyCode,
                                                        std::int16_t* charCode,
                                                        std::uint16_t* modifiers);
    static void s_Validation(platform::ControlRef control);
    static platform::OSStatus s_WindowFocus(platform::EventHandlerCallRef call,
                                            platform::EventRef event, void* userData);
    // Exceptions of work become error events.
    template <class Work>
    static void RunGuarded(platform::ControlRef control, Work work);

    platform::ControlKeyFilterResult FilterKey(short* keyCode, short* charCode,
                                               unsigned short* modifiers);
    bool IsFull() const;
    bool HasFocus() const;
    bool IsKeyOfType(short key) const;
    platform::OSStatus HandleSetCursor();
    platform::OSStatus HandleSetFocusPart(platform::EventHandlerCallRef call,
                                          platform::EventRef event);
    platform::OSStatus WindowFocus(platform::EventHandlerCallRef call, platform::EventRef event);
    template <class Notification>
    platform::OSStatus ChangeFocus(platform::EventHandlerCallRef call, platform::EventRef event,
                                   Notification notification);
    platform::OSStatus SetHooks(platform::ControlKeyFilterProc filter,
                                platform::ControlEditTextValidationProc validate);
    void SetScript();
    HuxString WithSuffix(const HuxString& text) const;
    HuxString WithoutSuffix(const HuxString& text) const;
    bool GetNumberText(HuxString& text) const; // false for an empty one, too
    long Integer(const HuxString& text) const;
    HuxString RealText(double value, const HuxString& format) const;
    bool CheckValueOfType();
    bool ShowRounded(double& value);
    void Correct(const HuxString& text);
    void Tell(const HuxString& text);

    std::int32_t m_nType = kFreeText;
    bool m_fOnReturnParentNotify = false;
    bool m_fSigned = true;
    double m_dMin = 0;
    double m_dMax = 0;
    double m_dDefault = 0;
    HuxString m_refFormat;
    HuxString m_refSuffix;
    bool m_fAutoCheck = true;
    std::int32_t m_nLimitText = -1;
    HuxCarbonEventPatcherT<HuxEditText> m_huxWindowEventHandler;
    bool m_fFocusProcess = false; // a change of the focus is being handled
    platform::ControlKeyFilterProc m_uppKeyFilter;
    platform::ControlEditTextValidationProc m_uppValidation;
    bool m_fSilent = false;
};

// SPDX-License-Identifier: BSD-3-Clause
// A window that runs modally or half-modally and ends with a code, by OK and Cancel commands.
//
//   DoModal -> CreateDialog -> OnInitDialog -> the modal loop -> the window is disposed -> the code
//                                                 "ok  " -> every control's check, OnOK -> 1
//                                                 "not!" -> OnCancel                    -> 2
#pragma once

#include "huxCommon/huxGUI/HuxWindowImplT.h"

inline constexpr long kHuxDialogOK = 1;
inline constexpr long kHuxDialogCancel = 2;
inline constexpr long kHuxDialogInitFailed = -1;

class HuxDialog : public HuxWindowImplT<HuxWindowBase> {
public:
    ~HuxDialog() override;

    const char* GetWindowName() override;
    platform::OSStatus Install(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrent(platform::EventHandlerCallRef call,
                                          platform::EventRef event) override;
    platform::OSStatus HandleEventEnd(platform::EventHandlerCallRef call,
                                      platform::EventRef event) override;
    bool HandleInitWindow() override;

    // Runs until EndDialog; the dialog lies over parent (null: over whatever is there). Gives the
    // code that it was ended with: cancel when the window ended in any other way or could not be
    // made, -1 when OnInitDialog refused or failed.
    virtual long DoModal(platform::WindowRef parent);
    virtual void EndDialog(long code);
    // Shows the dialog beside its parent (null: the front window), whose close and collapse boxes are
    // taken away until EndHalfModal. Returns at once.
    virtual platform::OSStatus BeginHalfModal(platform::WindowRef parent);
    virtual void EndHalfModal();
    virtual platform::OSStatus CreateDialog(); // 0 or -50
    virtual bool HandleInitDialog();
    virtual bool HandleOKButton();
    virtual bool HandleCancelButton();
    virtual bool OnInitDialog(); // false: the dialog ends with -1
    virtual bool OnOK();         // false: the dialog stays open
    virtual bool OnCancel();

    long GetReturnCode() const { return m_nRetCode; }
    bool IsHalfModal() const { return m_fHalfModal; }

private:
    enum class Run { kNone, kModal, kEnded }; // kEnded: the loop has not returned yet

    void RunModal(platform::WindowRef parent);
    void TakeParent(platform::Window* parent);
    void ReleaseParent();
    platform::OSStatus HandleCommand(platform::EventRef event);
    void PressOK();
    void PressCancel();

    std::int32_t m_nRetCode = kHuxDialogCancel;
    bool m_fHalfModal = false;
    platform::WindowRef m_refParentWindow = nullptr;
    std::uint32_t m_uParentAttributes = 0;
    Run m_run = Run::kNone;
};

// What dialogs derive from.
class HuxDialogImpl : public HuxDialog {
public:
    // Does nothing. It keeps the operations after it where callers that count slots expect them.
    virtual void DummyHuxDialog() {}
    // Dialogs override this; unhandled events go on to the classes below.
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                              platform::EventRef) override {
        return platform::kEventNotHandledErr;
    }
};

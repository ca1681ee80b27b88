// SPDX-License-Identifier: BSD-3-Clause
#include "controls/ControlsDialog.h"

#include <initializer_list>
#include <memory>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"

using namespace platform;

namespace {

// The numbers of the form's controls, which are their commands too.
enum Number : std::int32_t {
    kPush = 101,
    kCheck = 103,
    kSizes = 107,
    kColor = 108,
    kMenu = 201,
    kFont = 202,
    kPointsStep = 308,
    kRows = 401,
    kAddRow = 402,
    kRemoveRow = 403,
    kPane = 501,
    kLog = 601,
    kClearLog = 602,
};

constexpr OSType kTextProperty = 0x74657874; // "text"

struct FieldOfForm {
    std::int32_t number;
    const char* name;
};
constexpr std::array<FieldOfForm, 9> kFields { {
    { 301, "text" },
    { 302, "file name" },
    { 303, "name without path" },
    { 304, "signed real" },
    { 305, "unsigned real" },
    { 306, "signed integer" },
    { 307, "points" },
    { 309, "digits" },
    { 310, "lines" },
} };
enum FieldIndex : std::size_t {
    kText,
    kFileName,
    kPathless,
    kSignedReal,
    kUnsignedReal,
    kSignedInteger,
    kPoints,
    kDigits,
    kSeveralLines,
};

const char* NameOf(long notification) {
    switch (notification) {
    case kEditTextChanged:
        return "changed";
    case kEditTextReturn:
        return "Return";
    case kEditTextEscape:
        return "Escape";
    case kEditTextFocus:
        return "focus";
    case kEditTextUnfocus:
        return "focus lost";
    default:
        return "?";
    }
}

HuxString Quoted(const HuxString& text) {
    return HuxString::FromUTF8('"' + std::string(text.GetUTF8()) + '"');
}

} // namespace

// Setting up -------------------------------------------------------------------------------------

void ControlsDialog::_AttachControls() {
    AttachControl(m_push, kPush);
    AttachControl(m_check, kCheck);
    AttachControl(m_sizes, kSizes);
    AttachControl(m_color, kColor);
    AttachControl(m_menu, kMenu);
    AttachControl(m_font, kFont);
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        AttachControl(m_fields[i], kFields[i].number);
    AttachControl(m_pointsStep, kPointsStep);
    AttachControl(m_rows, kRows);
    AttachControl(m_pane, kPane);
    AttachControl(m_log, kLog);
}

bool ControlsDialog::OnInitDialog() {
    m_color.SetType(HuxBevelButton::kColor);
    m_color.SetColor({ 0, 0, 0xA000 });
    m_pane.SetColor(m_color.GetColor());
    m_sizes.SetValue(2);
    InitFields();
    InitMenu();
    m_font.AppendFontMenu();
    InitRows();
    m_made = true;
    return true;
}

void ControlsDialog::InitFields() {
    m_fields[kText].SetType(HuxEditText::kFreeText, true);
    m_fields[kText].SetText("Telop");
    m_fields[kFileName].SetType(HuxEditText::kFileName, true);
    m_fields[kPathless].SetType(HuxEditText::kPathlessName, true);
    m_fields[kSignedReal].SetType(true, 10, -10, 0, true);
    m_fields[kSignedReal].SetDouble(0);
    m_fields[kUnsignedReal].SetType(true, 5, 0, 1, true, "%.2f");
    m_fields[kUnsignedReal].SetSuffix("px");
    m_fields[kUnsignedReal].SetDouble(1);
    m_fields[kSignedInteger].SetType(false, 50, -50, 0, true);
    m_fields[kSignedInteger].SetSInt(-7);
    m_fields[kPoints].SetType(false, 99, 3, 36, true);
    m_fields[kPoints].SetLimitText(2);
    m_fields[kPoints].SetInt(36);
    m_fields[kDigits].SetType(HuxEditText::kDigitsWithPlus, true);
    m_fields[kSeveralLines].SetType(HuxEditText::kFreeText, false);
    m_pointsStep.SetEditControl(&m_fields[kPoints], 0, 1, 0);
}

void ControlsDialog::InitMenu() {
    m_menu.DeleteAllItems();
    m_menu.AppendItem("First", 10);
    m_menu.AppendItem("Second", 20);
    m_menu.AppendSeparator();
    m_menu.AppendItem("Third");
    m_menu.AppendItem("Not now", 0, kMenuItemAttrDisabled);
    m_menu.SetValue(1);
    m_menu.CheckItem(1, true);
}

void ControlsDialog::InitRows() {
    m_rows.InstallCallbacks(kTextProperty);
    for (int i = 0; i < 3; ++i)
        AddRow();
}

OSStatus ControlsDialog::InstallSelf(EventTargetRef target) {
    constexpr std::array kTypes { EventTypeSpec { kEventClassCommand, kEventCommandProcess } };
    constexpr std::array kListTypes {
        EventTypeSpec { kHuxEventClassDataBrowser, kHuxEventDataBrowserItemData },
        EventTypeSpec { kHuxEventClassDataBrowser, kHuxEventDataBrowserNotification }
    };
    const OSStatus status = InstallCarbonEventHandler(target, kTypes.size(), kTypes.data());
    return status ? status
                  : InstallCarbonEventHandler(target, kListTypes.size(), kListTypes.data());
}

// What arrives -----------------------------------------------------------------------------------

void ControlsDialog::Log(std::string_view what, const HuxString& detail) {
    std::string line(what);
    if (!detail.IsEmpty())
        line += ": " + std::string(detail.GetUTF8());
    m_log.Add(line);
}

OSStatus ControlsDialog::HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) {
    HuxDataBrowser::ItemDataRequest request {};
    if (HuxDataBrowser::ReadItemData(event, &request))
        return HandleItemData(request);
    HuxDataBrowser::ItemNotification notification {};
    if (HuxDataBrowser::ReadNotification(event, &notification)) {
        HandleNotification(notification);
        return kNoErr;
    }
    const bool isCommand =
        GetEventClass(event) == kEventClassCommand && GetEventKind(event) == kEventCommandProcess;
    return isCommand ? HandleCommand(event) : kEventNotHandledErr;
}

OSStatus ControlsDialog::HandleCommand(EventRef event) {
    std::uint32_t id = 0;
    long value = 0;
    HICommandExtended command {};
    const HuxCarbonEvent held(event, true);
    held.GetCommandParameter(&id, &value, &command, nullptr);
    if (!(command.attributes & kHICommandFromControl))
        return kEventNotHandledErr;
    for (std::size_t i = 0; i < kFields.size(); ++i)
        if (id == static_cast<std::uint32_t>(kFields[i].number))
            return HandleField(i, value);
    switch (id) {
    case kPush:
        Log("push");
        return kNoErr;
    case kCheck:
        HandleCheck();
        return kNoErr;
    case kSizes:
        Log("size", HuxString::FromInteger(m_sizes.GetValue()));
        return kNoErr;
    case kColor:
        m_pane.SetColor(m_color.GetColor());
        Log("colour");
        return kNoErr;
    case kMenu:
        HandleMenu();
        return kNoErr;
    case kFont:
        HandleFont();
        return kNoErr;
    case kPointsStep:
        Log(value == kControlUpButtonPart ? "step up" : "step down");
        return kNoErr;
    case kAddRow:
        AddRow();
        Log("row added");
        return kNoErr;
    case kRemoveRow:
        RemoveRow();
        return kNoErr;
    case kPane:
        HandlePane();
        return kNoErr;
    case kClearLog:
        m_log.Clear();
        return kNoErr;
    default:
        return kEventNotHandledErr;
    }
}

OSStatus ControlsDialog::HandleField(std::size_t index, long notification) {
    HuxEditText& field = m_fields[index];
    HuxString text;
    field.GetText(text, true);
    Log(std::string(kFields[index].name) + " " + NameOf(notification), Quoted(text));
    if (index == kText && notification == kEditTextChanged)
        m_pane.SetText(text.GetBytes());
    if (index == kPoints && notification == kEditTextChanged)
        ShowPoints();
    return kNoErr;
}

void ControlsDialog::ShowPoints() {
    long points = 0;
    if (m_fields[kPoints].GetInt(points, false))
        m_pane.SetPoints(static_cast<short>(points));
}

void ControlsDialog::HandleCheck() {
    const bool checked = m_check.IsChecked();
    for (HuxControlImpl* control : std::initializer_list<HuxControlImpl*> {
             &m_sizes, &m_color, &m_menu, &m_font, &m_pointsStep, &m_rows, &m_pane })
        if (checked)
            control->Enable();
        else
            control->Disable();
    for (HuxEditText& field : m_fields)
        if (checked)
            field.Enable();
        else
            field.Disable();
    Log("check", HuxString(checked ? "on" : "off"));
}

void ControlsDialog::HandleMenu() {
    const auto item = static_cast<MenuItemIndex>(m_menu.GetValue());
    m_menu.ClearCheckMarks();
    m_menu.CheckItem(item, true);
    const MenuItem* const picked = m_menu.GetMenu()->Item(item);
    Log("menu", picked ? HuxString::FromUTF8(picked->text) : HuxString());
}

void ControlsDialog::HandleFont() {
    std::array<unsigned char, 256> name {};
    m_font.GetFontFamilyName(name.data());
    FontNumber font = 0;
    GetFNum(name.data(), &font);
    m_pane.SetFont(font);
    Log("font", HuxString(name.data()));
}

void ControlsDialog::HandlePane() {
    const Point place = m_pane.GetPlace();
    Log("text placed",
        HuxString::FromUTF8(std::to_string(place.h) + ", " + std::to_string(place.v)));
}

// The list ---------------------------------------------------------------------------------------

void ControlsDialog::AddRow() {
    auto row =
        std::make_unique<RowData>(HuxString::FromUTF8("Row " + std::to_string(++m_rowsMade)));
    if (const HuxDataBrowserItemData* const added = m_rows.AddItem(std::move(row)))
        m_rows.SelectItem(*added);
}

void ControlsDialog::RemoveRow() {
    const auto* const row = dynamic_cast<RowData*>(m_rows.GetSelectItem());
    if (!row)
        return;
    Log("row removed", row->GetText());
    m_rows.RemoveItem(m_rows.GetSelectItem());
}

OSStatus ControlsDialog::HandleItemData(const HuxDataBrowser::ItemDataRequest& request) {
    auto* const row = dynamic_cast<RowData*>(request.row);
    if (!row)
        return kParamErr;
    if (request.property == kDataBrowserItemIsEditableProperty) {
        request.itemData->boolean = true;
    } else if (!request.setValue) {
        request.itemData->text = row->GetText().GetUTF8();
    } else {
        row->SetText(HuxString::FromUTF8(request.itemData->text));
        Log("row edited", row->GetText());
    }
    return kNoErr;
}

void ControlsDialog::HandleNotification(const HuxDataBrowser::ItemNotification& notification) {
    const auto* const row = dynamic_cast<RowData*>(notification.row);
    if (row && notification.message == kDataBrowserItemDoubleClicked)
        Log("row clicked twice", row->GetText());
}

// The end ----------------------------------------------------------------------------------------

bool ControlsDialog::OnOK() {
    Log("OK");
    return true;
}

bool ControlsDialog::OnCancel() {
    Log("Cancel");
    return true;
}

// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/PluginSession.h"

#include <chrono>
#include <cstring>
#include <utility>

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/studio/Project.h"
#include "apps/studio/TestCard.h"
#include "apps/studio/Texts.h"
#include "platform/ui/UIObject.h"
#include "platform/ui/Windows.h"

namespace studio {

namespace {

// How often the frame follows what a dialog edits in place.
constexpr std::chrono::milliseconds kModalInterval { 30 };

platform::WindowRef Window(EPIWindowRef window) {
    return reinterpret_cast<platform::WindowRef>(window);
}

} // namespace

PluginSession::PluginSession(QWidget* parent)
    : QWidget(parent), m_errors([this](const PluginError& error) { onError(Describe(error)); }),
      m_message(new QLabel(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    m_message->setMargin(10);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(m_message);
    connect(&m_modalTimer, &QTimer::timeout, this, [this] { FollowModal(); });

    host::SetFrontEnd(this);
    // Connects the plug-in's events with the application's loop.
    platform::EnsureUserInterface();
    if (auto plugin = host::Plugin::LoadByName("TextOverlay", m_trouble))
        m_effect = host::Effect::Make(std::move(plugin), m_trouble);
}

PluginSession::~PluginSession() {
    host::SetFrontEnd(nullptr); // whoever listens is ending, too
    m_dialog.reset();
}

// The panel

void PluginSession::Open(Project& project) {
    m_project = &project;
    if (!m_effect)
        return SetMessage(T("There is no text effect.") + QStringLiteral("\n\n") +
                          QString::fromStdString(m_trouble));
    std::string why;
    m_dialog = host::Dialog::Open(*m_effect, host::DialogKind::kSettingsPanel, DialogFrame(), why);
    auto* const window = m_dialog ? platform::Window::Find(Window(m_dialog->Window())) : nullptr;
    if (!window)
        return SetMessage(T("The effect's settings cannot be shown.") + QStringLiteral("\n\n") +
                          QString::fromStdString(why));
    SetMessage({});
    layout()->addWidget(&window->Widget());
    window->Show();
}

void PluginSession::SetMessage(const QString& text) {
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

QString PluginSession::Message() const {
    return m_message->isHidden() ? QString() : m_message->text();
}

void PluginSession::OpenEditor() {
    auto* const button = m_dialog ? findChild<QPushButton*>() : nullptr;
    if (button && !m_modal)
        button->click();
}

host::Dialog::Frame PluginSession::DialogFrame() {
    m_strings = m_project->StringsHere();
    host::Dialog::Frame frame;
    // Of a frame that cannot be read, so that there is room for the text.
    frame.width = m_background ? m_background->image->Width() : kTestCardWidth;
    frame.height = m_background ? m_background->image->Height() : kTestCardHeight;
    frame.composite = m_background ? m_background->image.get() : nullptr;
    if (m_project->Committed().strings.present)
        frame.strings = m_strings;
    return frame;
}

void PluginSession::ShowFrame(const std::shared_ptr<host::Frame>& background) {
    const bool otherStrings = m_project->StringsHere() != m_strings;
    if (!background || (background == m_background && !otherStrings))
        return;
    // The panel lets go of the old picture before it ends.
    const auto before = std::exchange(m_background, background);
    Notify(epiNotifyCompositeImage);
    if (otherStrings)
        Update(); // of a picture alone the panel does not tell the text anew
}

void PluginSession::Update() {
    if (!m_modal)
        Notify(epiNotifyUpdate);
}

void PluginSession::Notify(std::int32_t code) {
    if (!m_dialog)
        return;
    m_dialog->SetFrame(DialogFrame());
    std::string why;
    m_dialog->Notify(code, why);
    SetMessage(QString::fromStdString(why)); // one that went well takes the last trouble away
}

// The plug-in's dialogs

std::int32_t PluginSession::ParametersChanged(EPIHandleRef) {
    m_project->CommitParams();
    return 0;
}

std::int32_t PluginSession::Option(double value) {
    if (value >= 1)
        m_project->TurnTextOnHere();
    return 0;
}

std::int32_t PluginSession::ModalOpens(EPIWindowRef window) {
    m_modal = window;
    m_modalShown = m_project->LiveParams();
    m_modalTimer.start(kModalInterval);
    onModal();
    return 0;
}

// What the dialog reported is committed by now. What it edited and did not report, as when it is
// cancelled, goes.
std::int32_t PluginSession::ModalEnds(EPIWindowRef) {
    m_modal = nullptr;
    m_modalTimer.stop();
    m_project->DropLiveChanges();
    onModal();
    return 0;
}

void PluginSession::FollowModal() {
    // A dialog that failed may be gone without a word.
    if (!platform::Window::Find(Window(m_modal))) {
        ModalEnds(m_modal);
        return;
    }
    const auto live = m_project->LiveParams();
    if (std::memcmp(&live, &m_modalShown, sizeof live) == 0)
        return;
    m_modalShown = live;
    onEdited();
}

void PluginSession::FileFailed(const std::string& why) {
    onError(T("A file could not be read or written.") + QLatin1Char('\n') +
            QString::fromStdString(why));
}

} // namespace studio

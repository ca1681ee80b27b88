// SPDX-License-Identifier: BSD-3-Clause
// A bundle with a nib "Toolkit" of small forms, and what tests of windows with real widgets share.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <gmock/gmock.h>

#include "huxCommon/HostErrors.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "huxCommon/huxGUI/HuxDialogImpl.h"
#include "support/TemporaryFolder.h"
#include "support/WindowRefs.h"

namespace test {

struct FormWidget {
    const char* className;
    int controlID;
    const char* commandID = ""; // four characters; empty for none
};

inline std::string FormText(const std::string& name, const std::vector<FormWidget>& widgets) {
    std::string text = R"(<?xml version="1.0" encoding="UTF-8"?><ui version="4.0"><class>)" + name +
                       R"(</class><widget class="QWidget" name=")" + name +
                       R"("><layout class="QVBoxLayout" name="column">)";
    for (const FormWidget& widget : widgets) {
        const std::string id = std::to_string(widget.controlID);
        text += "<item><widget class=\"" + std::string(widget.className) + "\" name=\"w" + id +
                R"("><property name="controlID" stdset="0"><number>)" + id + "</number></property>";
        if (*widget.commandID)
            text += R"(<property name="commandID" stdset="0"><string>)" +
                    std::string(widget.commandID) + "</string></property>";
        text += "</widget></item>";
    }
    return text + "</layout></widget></ui>";
}

// The OK and Cancel buttons have the ids 1 and 2.
class ToolkitBundle {
public:
    ToolkitBundle() {
        m_folder.Write("Toolkit.bundle/Contents/Info.json",
                       R"({"identifier":"org.telop.test.toolkit","name":"T","version":"1"})");
        m_bundle = platform::CFBundleCreate(m_folder.Path() / "Toolkit.bundle");
    }
    ToolkitBundle(const ToolkitBundle&) = delete;
    ToolkitBundle& operator=(const ToolkitBundle&) = delete;
    ~ToolkitBundle() { Release(); }

    void AddForm(const std::string& name, std::vector<FormWidget> widgets) {
        widgets.push_back({ "QPushButton", 1, "ok  " });
        widgets.push_back({ "QPushButton", 2, "not!" });
        m_folder.Write("Toolkit.bundle/Contents/Resources/Toolkit.nib/" + name + ".ui",
                       FormText(name, widgets));
    }
    platform::CFBundleRef Get() const { return m_bundle; }
    void Release() {
        if (m_bundle)
            platform::CFRelease(std::exchange(m_bundle, nullptr));
    }

private:
    TemporaryFolder m_folder;
    platform::CFBundleRef m_bundle = nullptr;
};

inline void Drain() {
    QCoreApplication::processEvents();
    while (platform::DeliverNextEvent()) {
    }
}

// In the loop that runs by then.
inline void Later(std::function<void()> act) {
    QTimer::singleShot(0, std::move(act));
}

inline QWidget* WidgetNamed(platform::WindowRef window, const char* name) {
    QWidget* const widget = &test::At(window).Widget();
    return widget ? widget->findChild<QWidget*>(name) : nullptr;
}

inline void Click(platform::WindowRef window, const char* name) {
    QWidget* const widget = WidgetNamed(window, name);
    ASSERT_NE(widget, nullptr) << name;
    // Near its beginning, where a box or a radio button without a text is, too.
    QTest::mouseClick(widget, Qt::LeftButton, {}, { 8, widget->height() / 2 });
}

} // namespace test

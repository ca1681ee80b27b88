// SPDX-License-Identifier: BSD-3-Clause
// How far an export is, and a button that ends it.
#pragma once

#include <cstdint>
#include <functional>

#include <QElapsedTimer>
#include <QFrame>

class QLabel;
class QProgressBar;

namespace studio {

class ExportBar : public QFrame {
public:
    explicit ExportBar(QWidget* parent = nullptr);

    void Begin(std::int64_t frames);
    void SetDone(std::int64_t frames, std::int64_t failed);
    void End();
    QString Text() const;

    std::function<void()> onCancel;

private:
    QLabel* m_text;
    QProgressBar* m_progress;
    QElapsedTimer m_clock;
    std::int64_t m_frames = 0;
};

} // namespace studio

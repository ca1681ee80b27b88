// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/PlaceFields.h"

#include <cmath>
#include <limits>
#include <span>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QSpinBox>

#include "apps/studio/Texts.h"

namespace studio {

// A number of pixels, or with "%" behind it a share of the frame.
class LengthField : public QDoubleSpinBox {
public:
    explicit LengthField(QWidget* parent) : QDoubleSpinBox(parent) {
        setKeyboardTracking(false);
        setAccelerated(true);
    }

    void SetPixels(std::int32_t pixels) {
        m_mayBePerCent = m_isPerCent = false;
        setDecimals(0);
        setRange(std::numeric_limits<std::int32_t>::min(),
                 std::numeric_limits<std::int32_t>::max());
        Show(pixels);
    }
    void SetMargin(const host::Margin& margin) {
        m_mayBePerCent = true;
        m_isPerCent = margin.perCent;
        setDecimals(4);
        setRange(-host::Margin::kMarginMax, host::Margin::kMarginMax);
        Show(margin.value);
    }
    host::Margin Length() const { return { value(), m_isPerCent }; }

protected:
    QString textFromValue(double value) const override {
        return QString::fromStdString(host::MarginText({ value, m_isPerCent }));
    }
    double valueFromText(const QString& text) const override {
        host::Margin margin;
        if (!host::MarginFrom(Plain(text), margin))
            return value();
        m_isPerCent = margin.perCent;
        return margin.value;
    }
    QValidator::State validate(QString& text, int&) const override {
        static const QRegularExpression pixels(QStringLiteral("^\\s*-?\\d*\\s*$"));
        static const QRegularExpression any(QStringLiteral("^\\s*-?\\d*\\.?\\d*\\s*%?\\s*$"));
        if (!(m_mayBePerCent ? any : pixels).match(text).hasMatch())
            return QValidator::Invalid;
        host::Margin margin;
        return host::MarginFrom(Plain(text), margin) ? QValidator::Acceptable
                                                     : QValidator::Intermediate;
    }

private:
    static std::string Plain(QString text) { return text.remove(QLatin1Char(' ')).toStdString(); }
    // Also when the number is the same and its unit is another.
    void Show(double value) {
        setValue(value);
        const auto text = textFromValue(this->value());
        if (lineEdit()->text() != text)
            lineEdit()->setText(text);
    }

    bool m_mayBePerCent = false;
    mutable bool m_isPerCent = false; // as the text says that was read last
};

namespace {

constexpr const char* kPlaces[] { N("Free (x, y)"), N("Top left"),    N("Top"),   N("Top right"),
                                  N("Left"),        N("Centre"),      N("Right"), N("Bottom left"),
                                  N("Bottom"),      N("Bottom right") };
constexpr const char* kAreas[] { N("Frame"), N("Action area, 93 %"), N("Title area, 90 %"),
                                 N("Action area, 90 % (older)"), N("Title area, 80 % (older)") };

QComboBox* Choice(QWidget* parent, std::span<const char* const> texts, const QString& name) {
    auto* const choice = new QComboBox(parent);
    for (const auto* const text : texts)
        choice->addItem(T(text));
    choice->setAccessibleName(name);
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(8);
    choice->setFocusPolicy(Qt::StrongFocus);
    return choice;
}

QSpinBox* Number(QWidget* parent, int least, const QString& name, const QString& tip) {
    auto* const number = new QSpinBox(parent);
    number->setRange(least, host::Track::kReferenceHeightMax);
    number->setKeyboardTracking(false);
    number->setAccelerated(true);
    number->setAccessibleName(name);
    number->setToolTip(tip);
    return number;
}

} // namespace

PlaceFields::PlaceFields(QWidget* parent)
    : QWidget(parent), m_place(Choice(this, kPlaces, T("Place"))),
      m_area(Choice(this, kAreas, T("In"))), m_lengths(new QLabel(this)),
      m_x(new LengthField(this)), m_y(new LengthField(this)),
      m_size(Number(this, 1, T("Size"), T("Height of the letters in pixels"))),
      m_reference(Number(
          this, 0, T("For height"),
          T("The height of the frame that sizes and places are meant for; others get them in "
            "proportion. 0: they are pixels of every frame."))) {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setSpacing(4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    const auto row = [&](int at, QLabel* label, QWidget* field) {
        label->setBuddy(field);
        grid->addWidget(label, at, 0);
        grid->addWidget(field, at, 1, 1, field == m_x ? 1 : 2);
    };
    row(0, new QLabel(T("Place"), this), m_place);
    row(1, new QLabel(T("In"), this), m_area);
    row(2, m_lengths, m_x);
    grid->addWidget(m_y, 2, 2);
    row(3, new QLabel(T("Size"), this), m_size);
    row(4, new QLabel(T("For height"), this), m_reference);
    m_reference->setSpecialValueText(T("any frame"));
    for (auto* const choice : { m_place, m_area })
        connect(choice, &QComboBox::activated, this, [this] { Read(); });
    for (auto* const length : { m_x, m_y }) {
        length->setFocusPolicy(Qt::StrongFocus);
        connect(length, &QDoubleSpinBox::valueChanged, this, [this] { Read(); });
        connect(length, &QDoubleSpinBox::editingFinished, this, [this] { Read(); });
    }
    for (auto* const number : { m_size, m_reference }) {
        number->setFocusPolicy(Qt::StrongFocus);
        connect(number, &QSpinBox::valueChanged, this, [this] { Read(); });
    }
    SetTrack(m_track);
}

void PlaceFields::SetTrack(const host::Track& track) {
    m_track = track;
    const QSignalBlocker size(m_size), reference(m_reference);
    m_place->setCurrentIndex(static_cast<int>(track.anchor.place));
    m_area->setCurrentIndex(static_cast<int>(track.anchor.area));
    m_size->setValue(track.settings.nFontSize);
    m_reference->setValue(track.referenceHeight);
    Arrange();
    setEnabled(!track.isLocked);
}

// What the two lengths are depends on the place.
void PlaceFields::Arrange() {
    const QSignalBlocker x(m_x), y(m_y);
    const bool isFree = m_track.anchor.place == host::AnchorPlace::kNone;
    m_area->setEnabled(!isFree);
    m_lengths->setText(isFree ? T("x, y") : T("Margins"));
    const auto tip = T("Pixels, or per cent of the frame, such as 5%");
    for (auto* const length : { m_x, m_y })
        length->setToolTip(isFree ? QString() : tip);
    m_x->setAccessibleName(isFree ? QStringLiteral("x") : T("Margin at the side"));
    m_y->setAccessibleName(isFree ? QStringLiteral("y") : T("Margin above or below"));
    if (isFree) {
        m_x->SetPixels(m_track.settings.ptPos.x);
        m_y->SetPixels(m_track.settings.ptPos.y);
    } else {
        m_x->SetMargin(m_track.anchor.x);
        m_y->SetMargin(m_track.anchor.y);
    }
}

void PlaceFields::Read() {
    auto track = m_track;
    const bool wasFree = track.anchor.place == host::AnchorPlace::kNone;
    track.anchor.place = static_cast<host::AnchorPlace>(m_place->currentIndex());
    track.anchor.area = static_cast<host::AnchorArea>(m_area->currentIndex());
    if (wasFree) {
        track.settings.ptPos = { static_cast<std::int32_t>(std::llround(m_x->value())),
                                 static_cast<std::int32_t>(std::llround(m_y->value())) };
    } else {
        track.anchor.x = m_x->Length();
        track.anchor.y = m_y->Length();
    }
    const bool isPlace = !(track == m_track);
    track.settings.nFontSize = m_size->value();
    track.referenceHeight = m_reference->value();
    if (track == m_track)
        return;
    const auto& tell = isPlace ? onPlace : onSize;
    m_track = track;
    Arrange();
    tell(track);
}

} // namespace studio

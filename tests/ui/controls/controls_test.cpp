#include "support/printers.h"
#include "ui/controls/currencyfield.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/numerickeypad.h"
#include "ui/controls/sheet.h"
#include "ui/controls/wheelguard.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gtest/gtest.h>

TEST(NumericKeypad, KeysEditTheTextWithoutTakingFocus)
{
    const QString back = NumericKeypad::backspaceKey();
    const struct {
        const char* fault;
        const char* text;
        QString key;
        const char* expected;
    } cases[] = {
        {"a leading zero kept", "0", "5", "5"},
        {"the zero before a point lost", "0", ".", "0."},
        {"a second point taken", "1.5", ".", "1.5"},
        {"a bare point on nothing", "", ".", "0."},
        {"a zero inside a number dropped", "10", "0", "100"},
        {"a zero on nothing lost", "", "0", "0"},
        {"zero on zero doubled", "0", "0", "0"},
        {"backspace on nothing failed", "", back, ""},
        {"backspace took more than one", "12.", back, "12"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NumericKeypad::tap(c.text, c.key), c.expected) << c.fault;

    NumericKeypad keypad;
    QSignalSpy edited(&keypad, &NumericKeypad::textEdited);
    for (const QString key : {"5", ".", "2", "⌫", "7"})
        for (QPushButton* button : keypad.findChildren<QPushButton*>())
            if (button->text() == key)
                QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(keypad.text(), "5.7");
    EXPECT_EQ(edited.size(), 5);
    for (QPushButton* button : keypad.findChildren<QPushButton*>())
        EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
}

TEST(CurrencyField, ReadsOnlyANumberAndKeepsTheLastGoodValueOtherwise)
{
    const struct {
        const char* text;
        std::optional<double> expected;
    } cases[] = {
        {"12.5", 12.5},        {" 7 ", 7.0},          {"1,234.50", 1234.5},    {"-3", -3.0},
        {"", std::nullopt},    {"12a", std::nullopt}, {"1.2.3", std::nullopt}, {"12,5", std::nullopt},
        {"inf", std::nullopt}, {"nan", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CurrencyField::read(c.text), c.expected) << c.text;

    CurrencyField field(QStringLiteral("Opening float"));
    field.setValue(20);
    QLineEdit* edit = field.lineEdit();
    edit->selectAll();
    QTest::keyClicks(edit, "45.5");
    QSignalSpy changed(&field, &CurrencyField::valueChanged);
    QTest::keyClicks(edit, "x");
    EXPECT_EQ(field.value(), 45.5);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(field.value(), 45.5) << "an empty field is no number either";
    Q_EMIT edit->editingFinished();
    EXPECT_EQ(edit->text(), "45.50");
    EXPECT_EQ(changed.size(), 0);
}

namespace {
// Saves a name, refusing a blank one.
class NameSheet : public Sheet {
public:
    NameSheet()
        : Sheet(QStringLiteral("Save Name"), nullptr)
    {
        setTitle(QStringLiteral("Rename — Ama"));
        form()->addWidget(name);
        name->setFocus();
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }

    QLineEdit* name = new QLineEdit(this);
    int tries = 0;

private:
    void primaryAction() override
    {
        ++tries;
        if (name->text().isEmpty())
            return showError(QStringLiteral("Enter a name."));
        accept();
    }
};
} // namespace

TEST(Sheet, CancelAndEscapeCloseWithoutTryingAndReturnClosesOnlyOnceThePrimaryActionSucceeds)
{
    for (const bool escape : {false, true}) {
        NameSheet sheet;
        QTest::keyClicks(sheet.name, "Ama");
        if (escape)
            QTest::keyClick(sheet.name, Qt::Key_Escape);
        else
            QTest::mouseClick(sheet.cancelButton(), Qt::LeftButton);
        EXPECT_EQ(sheet.result(), QDialog::Rejected) << escape;
        EXPECT_EQ(sheet.tries, 0) << escape;
    }

    NameSheet sheet;
    EXPECT_EQ(sheet.windowTitle(), "Rename — Ama");
    EXPECT_EQ(QApplication::focusWidget(), sheet.name) << "the buttons, made first, don't take the focus";
    QTest::keyClick(sheet.name, Qt::Key_Return);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_EQ(sheet.errorLabel()->text(), "Enter a name.");
    QTest::keyClicks(sheet.name, "Ama");
    QTest::keyClick(sheet.name, Qt::Key_Return);
    EXPECT_EQ(sheet.tries, 2);
    EXPECT_EQ(sheet.result(), QDialog::Accepted);
}

namespace {
// A form taller than its scroll area, with the control half-way down under the pointer.
struct WheelForm {
    QScrollArea area;
    QComboBox* combo = new QComboBox;
    QSpinBox* spin = new QSpinBox;
    QLineEdit* other = new QLineEdit;

    WheelForm()
    {
        combo->addItems({QStringLiteral("each"), QStringLiteral("kg"), QStringLiteral("litre")});
        combo->setCurrentIndex(1);
        spin->setValue(5);
        auto* page = new QWidget;
        auto* layout = new QVBoxLayout(page);
        layout->addSpacing(300);
        layout->addWidget(combo);
        layout->addWidget(spin);
        layout->addWidget(other);
        layout->addSpacing(900);
        area.setWidget(page);
        area.setWidgetResizable(true);
        area.resize(300, 400);
        area.show();
        QApplication::setActiveWindow(&area);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&area));
    }

    int valueOf(QWidget* control) const { return control == combo ? combo->currentIndex() : spin->value(); }

    // Whether `control` kept the wheel; one it ignores, Qt hands on to the scroll area.
    bool wheelDownOver(QWidget* control)
    {
        const QPointF centre = QRectF(control->rect()).center();
        QWheelEvent wheel(centre, control->mapToGlobal(centre), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(control, &wheel);
        return wheel.isAccepted();
    }
};
} // namespace

TEST(WheelGuard, TheWheelChangesOnlyAFocusedControlAndElseGoesToTheForm)
{
    WheelGuard guard;
    qApp->installEventFilter(&guard);
    for (const bool focused : {false, true}) {
        for (const bool isCombo : {true, false}) {
            WheelForm form;
            QWidget* control = isCombo ? static_cast<QWidget*>(form.combo) : form.spin;
            (focused ? control : form.other)->setFocus();
            const int before = form.valueOf(control);
            const bool kept = form.wheelDownOver(control);
            const std::string what = std::string(isCombo ? "combo box" : "spin box") +
                                     (focused ? ", focused" : ", not focused");
            EXPECT_EQ(form.valueOf(control) != before, focused) << what;
            EXPECT_EQ(kept, focused) << what;
            EXPECT_EQ(control->hasFocus(), focused) << what << ": the wheel moved the focus";
        }
    }
}

#include "ui/controls/errorlabel.h"
#include "ui/controls/sheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {
// Saves a name, refusing a blank one.
class NameSheet : public Sheet {
public:
    NameSheet()
        : Sheet(QStringLiteral("Save Name"), nullptr)
        , name(new QLineEdit(this))
    {
        setTitle(QStringLiteral("Rename — Ama"));
        form()->addWidget(name);
        name->setFocus();
    }

    QLabel* headingLabel() const { return heading(); }

    QLineEdit* name;
    int tries = 0;

private:
    void primaryAction() override
    {
        ++tries;
        if (name->text().trimmed().isEmpty()) {
            showError(QStringLiteral("Enter a name."));
            return;
        }
        accept();
    }
};

void open(NameSheet& sheet)
{
    sheet.show();
    sheet.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet));
}
} // namespace

TEST(Sheet, ReturnTriesThePrimaryActionWhichClosesOnlyOnceItSucceeds)
{
    NameSheet sheet;
    open(sheet);
    EXPECT_EQ(sheet.windowTitle(), "Rename — Ama");
    EXPECT_EQ(sheet.headingLabel()->text(), "Rename — Ama");
    EXPECT_EQ(QApplication::focusWidget(), sheet.name) << "the buttons, made first, don't take the focus";
    EXPECT_TRUE(sheet.primaryButton()->isDefault());
    EXPECT_LT(sheet.cancelButton()->x(), sheet.primaryButton()->x()) << "Cancel, then the primary button";

    QTest::keyClick(sheet.name, Qt::Key_Return);
    EXPECT_EQ(sheet.tries, 1);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_TRUE(sheet.errorLabel()->isVisible());
    EXPECT_EQ(sheet.errorLabel()->text(), "Enter a name.");

    QTest::keyClicks(sheet.name, "Ama");
    QTest::keyClick(sheet.name, Qt::Key_Return);
    EXPECT_EQ(sheet.tries, 2);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(sheet.result(), QDialog::Accepted);
}

TEST(Sheet, CancelAndEscapeCloseWithoutTrying)
{
    for (const bool escape : {false, true}) {
        NameSheet sheet;
        open(sheet);
        QTest::keyClicks(sheet.name, "Ama");
        if (escape)
            QTest::keyClick(sheet.name, Qt::Key_Escape);
        else
            QTest::mouseClick(sheet.cancelButton(), Qt::LeftButton);
        EXPECT_FALSE(sheet.isVisible()) << escape;
        EXPECT_EQ(sheet.result(), QDialog::Rejected) << escape;
        EXPECT_EQ(sheet.tries, 0) << escape;
    }
}

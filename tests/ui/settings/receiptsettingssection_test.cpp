#include "ui/settings/receiptsettingssection.h"

#include "receipts/receiptsettingsmodel.h"
#include "records/appsettings.h"
#include "startup/sessionstore.h"
#include "support/printers.h"
#include "support/receiptdevices.h"
#include "support/teststore.h"
#include "ui/receipts/receiptprintview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {
struct ReceiptSettingsSectionTest : ::testing::Test {
    TestStore store;
    Ref<AppSettings> settings = store.saved(std::make_shared<AppSettings>());
    SessionStore session;
    ListedPrinters directory;
    RecordedReceiptPrinter printer;
    RecordedDrawer drawer;
    std::unique_ptr<ReceiptSettingsModel> model;
    QWidget page;

    ReceiptSettingsSectionTest()
    {
        directory.printers = {{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
        model = std::make_unique<ReceiptSettingsModel>(store.context(), settings, directory, printer, drawer);
        auto* layout = new QVBoxLayout(&page);
        layout->addWidget(new ReceiptSettingsSection(*model, session));
        layout->addWidget(new CashDrawerSettingsSection(*model));
        page.show();
    }

    // By its accessible name or its own text.
    template <class Widget> Widget* find(const QString& name) const
    {
        for (Widget* widget : page.findChildren<Widget*>())
            if (widget->accessibleName() == name || widget->property("text").toString() == name)
                return widget;
        ADD_FAILURE() << "no widget " << name.toStdString();
        return nullptr;
    }
};
} // namespace

// What each row means is the settings model's; here each row reaches it and saves at once.
TEST_F(ReceiptSettingsSectionTest, RowsSaveAtOnceAndThePreviewFollows)
{
    auto* printers = find<QComboBox>(QStringLiteral("Receipt Printer"));
    printers->setCurrentIndex(1);
    Q_EMIT printers->activated(1);
    EXPECT_EQ(settings->receiptPrinterQueue(), QStringLiteral("Receipt"));

    auto* footer = find<QLineEdit>(QStringLiteral("Receipt Footer"));
    footer->setFocus();
    footer->selectAll();
    QTest::keyClicks(footer, QStringLiteral("Akwaaba!"));
    EXPECT_NE(settings->receiptFooter(), QStringLiteral("Akwaaba!")) << "saved on leaving the field, not at each key";
    QTest::keyClick(footer, Qt::Key_Return);
    auto* preview = page.findChild<ReceiptPrintView*>();
    EXPECT_EQ(preview->receipt().footer, QStringLiteral("Akwaaba!"));

    // A Letter page is shown whole in the same room, so its text is smaller.
    const int thermalWidth = preview->width();
    find<QCheckBox>(QStringLiteral("Use 80mm Thermal Width"))->click();
    EXPECT_LE(preview->width(), 300);
    EXPECT_GT(preview->height() * thermalWidth, preview->width() * 200);
    store.reopen();
    EXPECT_EQ(store.context().fetchFirst<AppSettings>()->receiptFooter(), QStringLiteral("Akwaaba!"));
    EXPECT_FALSE(store.context().fetchFirst<AppSettings>()->useThermalReceiptWidth());
}

TEST_F(ReceiptSettingsSectionTest, TestDrawerOpensItAndThePinOnlyMattersForARealDrawer)
{
    auto* pin = find<QComboBox>(QStringLiteral("Drawer Pin"));
    EXPECT_FALSE(pin->isEnabled());
    find<QPushButton>(QStringLiteral("Test Drawer"))->click();
    EXPECT_EQ(drawer.openings, 1);
    auto* connection = find<QComboBox>(QStringLiteral("Drawer Connected"));
    connection->setCurrentIndex(1);
    Q_EMIT connection->activated(1);
    EXPECT_EQ(settings->cashDrawerConnectionRaw(), QStringLiteral("receiptPrinter"));
    EXPECT_TRUE(pin->isEnabled());
    find<QCheckBox>(QStringLiteral("Cash Drawer Enabled"))->click();
    EXPECT_FALSE(pin->isEnabled());
    EXPECT_FALSE(connection->isEnabled());
}

// The receipt and cash drawer settings, failed at each of their calls into SQLite in turn.

#include "faultscene.h"

#include "receipts/receiptsettingsmodel.h"
#include "support/receiptdevices.h"

namespace {

// Devices that stand still, so that only the store can fail.
struct QuietDevices {
    ListedPrinters directory;
    RecordedReceiptPrinter printer;
    RecordedDrawer drawer;
};

template <class Change, class Check>
void runSettingsLoop(const char* write, Change change, Check isChanged)
{
    runFaultLoops(write, [change, isChanged](FaultScene& scene) {
        auto devices = std::make_shared<QuietDevices>();
        devices->directory.printers = {{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
        auto model = std::make_shared<ReceiptSettingsModel>(scene.context, scene.settings, devices->directory,
                                                            devices->printer, devices->drawer);
        const Ref<AppSettings> settings = scene.settings;
        return FaultPlan{[devices, model, change]() -> std::optional<QString> {
                             change(*model);
                             return model->errorMessage();
                         },
                         [settings, isChanged] { EXPECT_FALSE(isChanged(*settings)); },
                         [settings, isChanged] { EXPECT_TRUE(isChanged(*settings)); }};
    });
}

TEST(Faults, ReceiptSettings)
{
    runSettingsLoop(
        "choose receipt printer",
        [](ReceiptSettingsModel& model) { model.choosePrinter(model.printerChoices().last().printer); },
        [](const AppSettings& settings) { return settings.receiptPrinterQueue() == QStringLiteral("Receipt"); });
    runSettingsLoop(
        "receipt footer", [](ReceiptSettingsModel& model) { model.setReceiptFooter(QStringLiteral("Akwaaba!")); },
        [](const AppSettings& settings) { return settings.receiptFooter() == QStringLiteral("Akwaaba!"); });
    runSettingsLoop(
        "drawer connection",
        [](ReceiptSettingsModel& model) { model.setDrawerConnection(CashDrawerConnection::receiptPrinter); },
        [](const AppSettings& settings) {
            return settings.cashDrawerConnectionRaw() == QStringLiteral("receiptPrinter");
        });
}

} // namespace

// A sale's receipt and the drawer's kick through the real print system: Qt's printing and the
// `lp` spooler against a CUPS scheduler of the test's own, read back from its spool.

#include "environment/appenvironment.h"
#include "receipts/receipthardwareerror.h"
#include "receipts/receiptrenderer.h"
#include "receiptscene.h"
#include "selling/cart.h"
#include "store/unitofwork.h"
#include "support/cupsscheduler.h"

#include <QPrinter>
#include <QTemporaryDir>

#include <cmath>

namespace {

// Stands in for the person at the print dialog, who cancels it.
struct CancelledPanel : PrintPanel {
    int shown = 0;
    bool choosePrinter(QPrinter&) override
    {
        ++shown;
        return false;
    }
};

struct RealPrinting : ReceiptScene {
    CupsScheduler scheduler;
    std::unique_ptr<AppEnvironment> environment;
    Ref<Product> rice = scene.product({.name = "Jasmine Rice 5kg", .price = 95, .stock = 40});

    void SetUp() override
    {
        if (!scheduler.isRunning())
            GTEST_SKIP() << scheduler.whyNotRunning().toStdString();
        environment = std::make_unique<AppEnvironment>(context);
        performUnitOfWork(context, [&] {
            settings->setReceiptPrinterQueue(scheduler.queue());
            settings->setCashDrawerConnectionRaw(QStringLiteral("receiptPrinter"));
            settings->setCashDrawerPinRaw(QStringLiteral("pin5"));
        });
    }

    Ref<Sale> ringUp()
    {
        Cart cart;
        cart.addOrIncrement(rice, 2);
        cart.setCustomer(kofi);
        return environment->salesService().checkout(cart, {{PaymentMethodType::cash, 190, 200, {}}}, cashier, {},
                                                    *settings);
    }

    QString pdfText(const QByteArray& pdf)
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("job.pdf")));
        file.open(QIODevice::WriteOnly);
        file.write(pdf);
        file.close();
        return outputOf(QStringLiteral("pdftotext"), {file.fileName(), QStringLiteral("-")})
            .normalized(QString::NormalizationForm_KC);
    }
};

TEST_F(RealPrinting, ASalesReceiptReachesTheQueueAndTheDrawerGetsExactlyItsKick)
{
    const Ref<Sale> sale = ringUp();
    const std::optional<InstalledPrinter> chosen = environment->chosenReceiptPrinter(*settings);
    ASSERT_TRUE(chosen) << "Qt doesn't see the scheduler's queue";
    environment->receiptPrinter().printReceipt(environment->receiptData(*sale, *settings), true, chosen);
    environment->cashDrawer().openDrawer();

    const QList<QByteArray> jobs = scheduler.waitForJobDocuments(2);
    ASSERT_EQ(jobs.size(), 2);
    EXPECT_TRUE(jobs[0].startsWith("%PDF"));
    const QString text = pdfText(jobs[0]);
    for (const QString& expected : {sale->invoiceNumber(), QStringLiteral("Jasmine Rice 5kg"),
                                    QStringLiteral("Kofi Boateng"), QStringLiteral("Thank you for your business!")})
        EXPECT_TRUE(text.contains(expected)) << expected.toStdString() << " not in:\n" << text.toStdString();
    EXPECT_EQ(jobs[1], QByteArray::fromHex("1B700119FA"));
}

TEST_F(RealPrinting, AQueueThatVanishedIsNeverPrintedToElsewhere)
{
    ASSERT_TRUE(scheduler.addQueue(QStringLiteral("Office")));
    const std::optional<InstalledPrinter> chosen = environment->chosenReceiptPrinter(*settings);
    ASSERT_TRUE(chosen);
    ASSERT_TRUE(scheduler.removeQueue());
    const int jobsBefore = scheduler.jobCount();

    auto panel = std::make_unique<CancelledPanel>();
    CancelledPanel& shown = *panel;
    environment->setPrintPanel(std::move(panel));
    environment->receiptPrinter().printReceipt(environment->receiptData(*ringUp(), *settings), true, chosen);
    // The person was asked; nothing went to the other queue behind their back.
    EXPECT_EQ(shown.shown, 1);
    try {
        environment->cashDrawer().openDrawer();
        ADD_FAILURE() << "kicked a drawer through a queue that is gone";
    } catch (const ReceiptHardwareError& error) {
        EXPECT_EQ(error.errorCase(), ReceiptHardwareError::Case::printerNotFound);
    }
    EXPECT_EQ(scheduler.jobCount(), jobsBefore);
}

} // namespace

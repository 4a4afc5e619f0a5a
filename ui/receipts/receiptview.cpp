#include "ui/receipts/receiptview.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "ui/receipts/receiptprintview.h"
#include "ui/style/theme.h"

#include <QFrame>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {
// A Letter receipt is shown smaller, so that the sheet fits beside the screen it opens over.
constexpr int largestPreviewWidth = 420;
constexpr int previewHeight = 440;
} // namespace

ReceiptView::ReceiptView(const Sale& sale, AppEnvironment& environment, SessionStore& session,
                         QWidget* parent)
    : Sheet(QStringLiteral("Print"), parent)
    , m_environment(environment)
    , m_session(session)
    , m_receipt(environment.receiptData(sale, *session.settings()))
    , m_preview(new ReceiptPrintView(this))
{
    setTitle((sale.isRefund() ? QStringLiteral("Refund receipt %1") : QStringLiteral("Receipt %1"))
                 .arg(sale.invoiceNumber()));
    cancelButton()->setText(QStringLiteral("Done"));
    m_preview->setLargestWidth(largestPreviewWidth);
    m_preview->setReceipt(m_receipt, session.settings()->useThermalReceiptWidth());

    // The paper on a grey tray, scrolled when the receipt is long.
    auto* tray = new QFrame(this);
    Theme::setKind(tray, "paperTray");
    auto* trayLayout = new QVBoxLayout(tray);
    trayLayout->setContentsMargins(16, 16, 16, 16);
    trayLayout->addWidget(m_preview, 0, Qt::AlignHCenter | Qt::AlignTop);
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(tray);
    scroll->setWidgetResizable(true);
    scroll->setMinimumWidth(m_preview->width() + 48);
    scroll->setFixedHeight(std::min(previewHeight, m_preview->height() + 36));
    form()->addWidget(scroll);
}

ReceiptView* ReceiptView::present(const Sale& sale, AppEnvironment& environment, SessionStore& session,
                                  QWidget* parent)
{
    if (!session.settings())
        return nullptr;
    auto* view = new ReceiptView(sale, environment, session, parent);
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->open();
    return view;
}

void ReceiptView::primaryAction()
{
    const Ref<AppSettings> settings = m_session.settings();
    m_environment.receiptPrinter().printReceipt(m_receipt, settings->useThermalReceiptWidth(),
                                                m_environment.chosenReceiptPrinter(*settings));
    accept();
}

#include "ui/pos/posworkspaceview.h"

#include "environment/appenvironment.h"
#include "pos/posviewmodel.h"
#include "startup/sessionstore.h"
#include "ui/access/approvalsheet.h"
#include "ui/controls/emptystate.h"
#include "ui/controls/scannerburstfilter.h"
#include "ui/navigation/posactionbus.h"
#include "ui/pos/cartpanelview.h"
#include "ui/pos/heldsalesview.h"
#include "ui/pos/paymentsheetview.h"
#include "ui/pos/producttiledelegate.h"
#include "ui/pos/quantityentrysheet.h"
#include "ui/receipts/receiptview.h"
#include "ui/style/theme.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

POSWorkspaceView::POSWorkspaceView(AppEnvironment& environment, SessionStore& session, POSViewModel& pos,
                                   POSActionBus& bus, QWidget* parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_session(session)
    , m_pos(pos)
    , m_bus(&bus)
    , m_pages(new QStackedWidget(this))
    , m_search(new QLineEdit(this))
    , m_chipRow(new QHBoxLayout)
    , m_chips(new QButtonGroup(this))
    , m_gridPages(new QStackedWidget(this))
    , m_grid(new QListView(this))
    , m_cart(new CartPanelView(environment, session, pos, this))
{
    auto* workspace = new QWidget(m_pages);
    auto* layout = new QHBoxLayout(workspace);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeBrowser(), 1);
    m_cart->setFixedWidth(420);
    layout->addWidget(m_cart);
    m_pages->addWidget(workspace);
    m_pages->addWidget(makeEmptyState(POSViewModel::tillClosedTitle(), POSViewModel::tillClosedMessage(), m_pages));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);

    m_searchPause.setSingleShot(true);
    m_searchPause.setInterval(40);
    connect(m_search, &QLineEdit::textEdited, &m_searchPause, qOverload<>(&QTimer::start));
    connect(&m_searchPause, &QTimer::timeout, this, [this] { m_pos.setSearchText(m_search->text()); });
    connect(m_search, &QLineEdit::returnPressed, this, [this] {
        m_searchPause.stop();
        // The grid may never have seen the code, so the field is emptied here, not through it.
        if (m_pos.submitSearch(m_search->text()))
            m_search->clear();
    });
    connect(&m_pos, &POSViewModel::searchTextChanged, this, [this] {
        if (m_search->text() != m_pos.searchText())
            m_search->setText(m_pos.searchText());
    });
    connect(&m_pos, &POSViewModel::focusSearchRequested, this, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    connect(m_grid, &QListView::clicked, this, [this](const QModelIndex& index) {
        m_pos.addProductAt(index.row());
        focusScan();
    });
    ProductGridModel& products = m_pos.products();
    connect(&products, &QAbstractItemModel::modelReset, this, [this] {
        showChips();
        showGridState();
    });
    connect(&products, &QAbstractItemModel::rowsInserted, this, &POSWorkspaceView::showGridState);
    connect(&products, &QAbstractItemModel::rowsRemoved, this, &POSWorkspaceView::showGridState);
    connect(&products, &QAbstractItemModel::layoutChanged, this, &POSWorkspaceView::showGridState);
    connect(m_cart, &CartPanelView::payRequested, this, &POSWorkspaceView::startCheckout);
    connect(m_cart, &CartPanelView::heldSalesRequested, this, [this] { m_pos.setShowHeldSales(true); });
    connect(m_cart, &CartPanelView::done, this, &POSWorkspaceView::focusScan);
    connect(&m_pos, &POSViewModel::sheetsChanged, this, &POSWorkspaceView::followSheets);
    connect(&m_pos, &ViewModel::errorMessageChanged, this, &POSWorkspaceView::showError);
    connect(&m_pos, &POSViewModel::approvalRequested, this, &POSWorkspaceView::showApproval);
    connect(&m_session, &SessionStore::currentTillShiftChanged, this, &POSWorkspaceView::showTillState);
    m_search->installEventFilter(this);
    addShortcuts();
    showChips();
    showGridState();
    showTillState();
}

POSWorkspaceView::~POSWorkspaceView()
{
    unregisterCommands();
}

QWidget* POSWorkspaceView::makeBrowser()
{
    auto* browser = new QWidget(this);
    m_search->setParent(browser);
    m_search->setPlaceholderText(QStringLiteral("Scan a barcode or search products"));
    m_search->setAccessibleName(QStringLiteral("Scan or search"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumHeight(40);

    auto* chips = new QWidget(browser);
    chips->setLayout(m_chipRow);
    m_chipRow->setContentsMargins(0, 0, 0, 0);
    m_chipRow->setSpacing(6);
    auto* chipScroll = new QScrollArea(browser);
    chipScroll->setWidget(chips);
    chipScroll->setWidgetResizable(true);
    chipScroll->setFrameShape(QFrame::NoFrame);
    chipScroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    chipScroll->setFixedHeight(44);
    chipScroll->setFocusPolicy(Qt::NoFocus);
    m_chips->setExclusive(true);
    connect(m_chips, &QButtonGroup::idClicked, this, [this](int id) {
        const QList<CategoryChip>& categories = m_pos.products().categories();
        m_pos.setSelectedCategoryID(id < 0 || id >= categories.size() ? std::nullopt
                                                                       : std::optional<QUuid>(categories[id].id));
        focusScan();
    });

    m_grid->setParent(m_gridPages);
    m_grid->setModel(&m_pos.products());
    m_tiles = new ProductTileDelegate(m_grid);
    m_grid->setItemDelegate(m_tiles);
    m_grid->viewport()->installEventFilter(this);
    m_grid->setViewMode(QListView::IconMode);
    m_grid->setResizeMode(QListView::Adjust);
    m_grid->setMovement(QListView::Static);
    m_grid->setUniformItemSizes(true);
    // A long list is laid out a screenful at a time, so the grid comes back at once after a scan.
    m_grid->setLayoutMode(QListView::Batched);
    m_grid->setBatchSize(200);
    m_grid->setGridSize(m_tiles->tileSize());
    m_grid->setSelectionMode(QAbstractItemView::NoSelection);
    m_grid->setFocusPolicy(Qt::NoFocus);
    m_grid->setMouseTracking(true);
    m_grid->setFrameShape(QFrame::NoFrame);
    m_grid->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_grid->setAccessibleName(QStringLiteral("Products"));
    m_gridPages->addWidget(m_grid);
    m_gridPages->addWidget(makeEmptyState(POSViewModel::noProductsTitle(), POSViewModel::noProductsMessage(), m_gridPages));

    auto* layout = new QVBoxLayout(browser);
    layout->setContentsMargins(16, 16, 12, 8);
    layout->setSpacing(8);
    layout->addWidget(m_search);
    layout->addWidget(chipScroll);
    layout->addWidget(m_gridPages, 1);
    return browser;
}

void POSWorkspaceView::addShortcuts()
{
    // Only while the keyboard is on this screen and no sheet is over it.
    const auto add = [this](const QKeySequence& key, auto action) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(QKeySequence(Qt::Key_F12), [this] { startCheckout(); });
    add(QKeySequence(Qt::Key_F3), [this] { m_cart->changeSelectedQuantity(); });
    add(QKeySequence(Qt::Key_F4), [this] { m_cart->discountSelectedLine(); });
    add(QKeySequence(Qt::CTRL | Qt::Key_Delete), [this] { m_cart->removeSelectedLine(); });
    add(QKeySequence(Qt::CTRL | Qt::Key_D), [this] {
        m_cart->saleDiscountField()->setFocus();
        m_cart->saleDiscountField()->selectAll();
    });
    add(QKeySequence(Qt::CTRL | Qt::Key_K), [this] { m_cart->showCustomerPicker(); });
}

bool POSWorkspaceView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_grid->viewport() && event->type() == QEvent::Resize) {
        // The list keeps room for its scroll bar while laying out, whether or not it shows yet.
        const int scrollBar =
            m_grid->verticalScrollBar()->isVisible() ? 0 : m_grid->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        const QSize tile =
            ProductTileDelegate::tileSizeFor(static_cast<QResizeEvent*>(event)->size().width() - scrollBar);
        if (tile != m_tiles->tileSize()) {
            m_tiles->setTileSize(tile);
            m_grid->setGridSize(tile);
        }
    }
    // The scan field has no use for the arrows: they walk the cart's lines.
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            m_cart->moveSelection(key == Qt::Key_Down ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void POSWorkspaceView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_pos.setGridOnShow(true);
    registerCommands();
    showError();
    focusScan();
}

void POSWorkspaceView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_pos.setGridOnShow(false);
    unregisterCommands();
}

void POSWorkspaceView::registerCommands()
{
    SaleCommands commands = m_pos.commands();
    m_bus->setNewSale(std::move(commands.newSale));
    m_bus->setFindProduct(std::move(commands.findProduct));
    m_bus->setCompleteSale([this] { startCheckout(); });
    m_bus->setHoldSale(std::move(commands.holdSale));
    m_bus->setPrintReceipt(std::move(commands.printReceipt));
    m_bus->setRecallSale(std::move(commands.recallSale));
    m_bus->setIsPOSWorkspaceActive(true);
}

void POSWorkspaceView::unregisterCommands()
{
    // The window's bus may be gone before its screens are.
    if (!m_bus || !m_bus->isPOSWorkspaceActive())
        return;
    m_bus->setNewSale({});
    m_bus->setFindProduct({});
    m_bus->setCompleteSale({});
    m_bus->setHoldSale({});
    m_bus->setPrintReceipt({});
    m_bus->setRecallSale({});
    m_bus->setIsPOSWorkspaceActive(false);
}

QList<QAbstractButton*> POSWorkspaceView::categoryChips() const
{
    return m_chips->buttons();
}

bool POSWorkspaceView::isShowingTillClosed() const
{
    return m_pages->currentIndex() == 1;
}

bool POSWorkspaceView::isShowingNoProducts() const
{
    return m_gridPages->currentIndex() == 1;
}

void POSWorkspaceView::showTillState()
{
    m_pages->setCurrentIndex(m_pos.isTillClosed() ? 1 : 0);
    focusScan();
}

void POSWorkspaceView::showChips()
{
    // The grid resets at every keystroke and chip; the chips are made again only when the
    // categories themselves changed, never under the click that is choosing one.
    QStringList categories;
    for (const CategoryChip& chip : m_pos.products().categories())
        categories << chip.id.toString() + chip.name;
    if (categories == m_shownCategories && !m_chips->buttons().isEmpty())
        return;
    m_shownCategories = categories;
    const std::optional<QUuid> chosen = m_pos.selectedCategoryID();
    for (QAbstractButton* chip : m_chips->buttons()) {
        m_chips->removeButton(chip);
        delete chip;
    }
    while (QLayoutItem* item = m_chipRow->takeAt(0))
        delete item;
    const auto addChip = [this](const QString& name, int id, bool checked) {
        auto* chip = new QPushButton(name, m_chipRow->parentWidget());
        chip->setCheckable(true);
        chip->setChecked(checked);
        chip->setFocusPolicy(Qt::NoFocus);
        Theme::setKind(chip, "chip");
        m_chips->addButton(chip, id);
        m_chipRow->addWidget(chip);
    };
    addChip(QStringLiteral("All"), -1, !chosen);
    const QList<CategoryChip>& chips = m_pos.products().categories();
    for (int i = 0; i < chips.size(); ++i)
        addChip(chips[i].name, i, chosen == chips[i].id);
    m_chipRow->addStretch();
}

void POSWorkspaceView::showGridState()
{
    m_gridPages->setCurrentIndex(m_pos.products().rowCount() == 0 ? 1 : 0);
}

void POSWorkspaceView::startCheckout()
{
    if (!m_pos.canHoldOrPay())
        return;
    m_pos.startCheckout();
}

QDialog* POSWorkspaceView::openSheet() const
{
    for (QDialog* sheet : {m_paymentSheet.data(), m_quantitySheet.data(), m_receiptSheet.data(), m_heldSales.data()}) {
        if (sheet && sheet->isVisible())
            return sheet;
    }
    return nullptr;
}

QWidget* POSWorkspaceView::sheetParent() const
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return window();
}

void POSWorkspaceView::followSheets()
{
    follow(m_paymentSheet, m_pos.paymentSheet() != nullptr,
           [this] { return new PaymentSheetView(*m_pos.paymentSheet(), window()); },
           // Cancel and Escape close the sheet; the sale stays in the cart as it was.
           [this] { m_pos.closePaymentSheet(); });
    follow(
        m_quantitySheet, m_pos.pendingMeasuredProduct() || m_pos.editingQuantityLineID(),
        [this]() -> QDialog* {
            m_quantityEntry = m_pos.quantityEntry();
            if (!m_quantityEntry)
                return nullptr;
            return new QuantityEntrySheet(
                *m_quantityEntry, [this](double quantity) { m_pos.finishQuantityEntry(quantity); },
                [this] { m_pos.cancelQuantityEntry(); }, window());
        },
        // The sheet itself says whether it took an amount or was cancelled.
        {});
    follow(
        m_heldSales, m_pos.showHeldSales(),
        [this] {
            return new HeldSalesView(
                m_environment.modelContext(), m_session,
                [this](const Ref<HeldSale>& held) { m_pos.pickHeldSale(held); }, window());
        },
        [this] { m_pos.setShowHeldSales(false); });
    followPendingRecall();
    follow(
        m_receiptSheet, m_pos.showReceiptSheet() && m_pos.lastCompletedSale(),
        [this]() -> QDialog* {
            // Without the store's settings there is no receipt to show.
            ReceiptView* sheet = ReceiptView::present(*m_pos.lastCompletedSale(), m_environment, m_session, window());
            if (!sheet) {
                m_pos.closeReceiptSheet();
                return nullptr;
            }
            takeScansPast(sheet);
            return sheet;
        },
        [this] { m_pos.closeReceiptSheet(); });
    focusScan();
}

void POSWorkspaceView::takeScansPast(QDialog* sheet)
{
    // Every key reaches the sheet itself once: nothing inside it takes the keyboard. Return still
    // prints through the sheet's default button when a person presses it.
    for (QWidget* inside : sheet->findChildren<QWidget*>())
        inside->setFocusPolicy(Qt::NoFocus);
    sheet->setFocusPolicy(Qt::StrongFocus);
    sheet->setFocus();
    auto* scans = new ScannerBurstFilter(sheet);
    scans->watch(sheet);
    connect(scans, &ScannerBurstFilter::burstRefused, this, [this, sheet](const QString& code) {
        sheet->done(QDialog::Accepted);
        if (!m_pos.submitSearch(code))
            m_search->setText(code);
    });
}

void POSWorkspaceView::follow(QPointer<QDialog>& shown, bool wanted, const std::function<QDialog*()>& make,
                              std::function<void()> closed)
{
    if (wanted && !shown) {
        QDialog* sheet = make();
        if (!sheet)
            return;
        sheet->setAttribute(Qt::WA_DeleteOnClose);
        connect(sheet, &QDialog::finished, this, [this, closed = std::move(closed)] {
            if (closed)
                closed();
            focusScan();
        });
        shown = sheet;
        if (!sheet->isVisible())
            sheet->open();
    } else if (!wanted && shown) {
        QDialog* sheet = shown;
        shown = nullptr;
        sheet->done(QDialog::Accepted);
    }
}

void POSWorkspaceView::followPendingRecall()
{
    if (!m_pos.pendingRecall() || m_replaceCart)
        return;
    auto* box = new QMessageBox(QMessageBox::Question, POSViewModel::replaceCartTitle(), m_pos.replaceCartMessage(),
                                QMessageBox::NoButton, sheetParent());
    box->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton* replace = box->addButton(QStringLiteral("Replace Cart"), QMessageBox::DestructiveRole);
    box->addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    box->setDefaultButton(replace);
    connect(box, &QMessageBox::finished, this, [this, box, replace] {
        if (box->clickedButton() == replace)
            m_pos.confirmReplaceCart();
        else
            m_pos.cancelReplaceCart();
        focusScan();
    });
    m_replaceCart = box;
    box->open();
}

void POSWorkspaceView::showError()
{
    const std::optional<QString> message = m_pos.errorMessage();
    // Hidden, the message waits for the screen to show; a second one waits for the first to go.
    if (!message || m_alert || !isVisible())
        return;
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Heads up"), *message, QMessageBox::Ok,
                                sheetParent());
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, this, [this] {
        m_pos.clearError();
        focusScan();
    });
    m_alert = box;
    box->open();
}

void POSWorkspaceView::showApproval()
{
    std::optional<ApprovalRequest> request = m_pos.takeApprovalRequest();
    if (!request)
        return;
    ApprovalSheet* sheet = ApprovalSheet::raise(std::move(*request), m_environment, sheetParent());
    connect(sheet, &QDialog::finished, this, &POSWorkspaceView::focusScan);
}

void POSWorkspaceView::focusScan()
{
    if (!isVisible() || QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return;
    // A field of the cart being typed in keeps the keyboard.
    QWidget* focused = QApplication::focusWidget();
    if (focused && focused != m_search && m_cart->isAncestorOf(focused) && focused->inherits("QLineEdit"))
        return;
    if (m_pos.isTillClosed())
        return;
    m_search->setFocus();
}

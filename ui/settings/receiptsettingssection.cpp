#include "ui/settings/receiptsettingssection.h"

#include "receipts/receiptsettingsmodel.h"
#include "records/appsettings.h"
#include "records/user.h"
#include "startup/sessionstore.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/receipts/receiptprintview.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int previewWidth = 300;

void showText(QLineEdit* edit, const QString& text)
{
    if (!edit->hasFocus() && edit->text() != text)
        edit->setText(text);
}

} // namespace

ReceiptSettingsSection::ReceiptSettingsSection(ReceiptSettingsModel& model, SessionStore& session,
                                               QWidget* parent)
    : SettingsSection(QStringLiteral("Receipt"), parent)
    , m_model(model)
    , m_session(session)
{
    QVBoxLayout* card = addCard();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(24);
    card->addLayout(columns);
    // Labels above their fields, so that the form and the preview fit side by side.
    auto* rows = new QVBoxLayout;
    rows->setSpacing(14);
    columns->addLayout(rows, 1);
    // At the top, where it is seen without scrolling whichever row it is about.
    m_error = new ErrorLabel(this);
    rows->addWidget(m_error);

    m_footer = new QLineEdit(this);
    addLabelledField(rows, QStringLiteral("Receipt Footer"), m_footer);
    saveWhenEdited(m_footer, [this](const QString& text) { m_model.setReceiptFooter(text); });

    m_thermalWidth = new QCheckBox(QStringLiteral("Use 80mm Thermal Width"), this);
    rows->addWidget(m_thermalWidth);
    connect(m_thermalWidth, &QCheckBox::toggled, &m_model, &ReceiptSettingsModel::setUseThermalWidth);

    addLabelledField(rows, QStringLiteral("Company Logo"), logoRow());
    addLabelledField(rows, QStringLiteral("Receipt Printer"), printerRow());

    m_printAutomatically = new QCheckBox(QStringLiteral("Print Receipt Automatically After Each Sale"), this);
    rows->addWidget(m_printAutomatically);
    connect(m_printAutomatically, &QCheckBox::toggled, &m_model, &ReceiptSettingsModel::setPrintAutomatically);

    m_countryCode = new QLineEdit(this);
    m_countryCode->setMaximumWidth(90);
    m_countryCode->setInputMethodHints(Qt::ImhDigitsOnly);
    addLabelledField(rows, QStringLiteral("Country Code for WhatsApp and SMS"), m_countryCode);
    saveWhenEdited(m_countryCode, [this](const QString& text) { m_model.setCountryCallingCode(text); });

    rows->addStretch();

    // The receipt lies on a grey tray so that its white paper stands out from the card.
    auto* tray = new QFrame(this);
    tray->setAttribute(Qt::WA_StyledBackground);
    Theme::setKind(tray, "paperTray");
    auto* previewColumn = new QVBoxLayout(tray);
    previewColumn->setContentsMargins(12, 10, 12, 12);
    previewColumn->addWidget(Theme::label(QStringLiteral("Preview"), Theme::Text::note, tray));
    m_preview = new ReceiptPrintView(tray);
    m_preview->setLargestWidth(previewWidth);
    previewColumn->addWidget(m_preview);
    previewColumn->addStretch();
    columns->addWidget(tray, 0, Qt::AlignTop);

    connect(&m_model, &ReceiptSettingsModel::changed, this, &ReceiptSettingsSection::refresh);
    connect(&m_model, &ViewModel::errorMessageChanged, this, [this] { m_error->setMessage(m_model.errorMessage()); });
    refresh();
}

QWidget* ReceiptSettingsSection::logoRow()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_logo = new QLabel(row);
    m_logo->setAccessibleName(QStringLiteral("Company Logo"));
    layout->addWidget(m_logo);
    auto* choose = new QPushButton(QStringLiteral("Choose Logo…"), row);
    connect(choose, &QPushButton::clicked, this, &ReceiptSettingsSection::chooseLogo);
    layout->addWidget(choose);
    m_removeLogo = new QPushButton(QStringLiteral("Remove Logo"), row);
    connect(m_removeLogo, &QPushButton::clicked, this, &ReceiptSettingsSection::askToRemoveLogo);
    layout->addWidget(m_removeLogo);
    layout->addStretch();
    return row;
}

QWidget* ReceiptSettingsSection::printerRow()
{
    auto* row = new QWidget(this);
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    m_printer = new QComboBox(row);
    m_printer->setAccessibleName(QStringLiteral("Receipt Printer"));
    connect(m_printer, &QComboBox::activated, this, [this](int index) {
        const QList<ReceiptSettingsModel::PrinterChoice> choices = m_model.printerChoices();
        if (index >= 0 && index < choices.size())
            m_model.choosePrinter(choices[index].printer);
    });
    layout->addWidget(m_printer);

    auto* actions = new QHBoxLayout;
    actions->setSpacing(12);
    auto* test = new QPushButton(QStringLiteral("Test Print"), row);
    connect(test, &QPushButton::clicked, this, [this] {
        const Ref<User> user = m_session.currentUser();
        m_model.testPrint(user ? user->name() : QString());
    });
    actions->addWidget(test);
    auto* refreshList = new QLabel(
        QStringLiteral("<a href=\"refresh\">Refresh the list after plugging in or adding a printer</a>"), row);
    refreshList->setWordWrap(true);
    refreshList->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(refreshList, &QLabel::linkActivated, &m_model, &ReceiptSettingsModel::refreshPrinters);
    actions->addWidget(refreshList, 1);
    layout->addLayout(actions);

    m_printerWarning = Theme::label(
        QStringLiteral("This printer isn't connected. Receipts will show the print dialog until it's back."),
        Theme::Text::note, row);
    Theme::setKind(m_printerWarning, "warning");
    layout->addWidget(m_printerWarning);
    m_printerMessage = Theme::label(QString(), Theme::Text::note, row);
    layout->addWidget(m_printerMessage);
    layout->addWidget(Theme::label(QStringLiteral("Choose the receipt printer here to print without the dialog. Add "
                                                  "the printer to the computer first in the system's printer settings."),
                                   Theme::Text::note, row));
    return row;
}

void ReceiptSettingsSection::chooseLogo()
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Choose a Logo"), QDir(pictures).exists() ? pictures : QDir::homePath(),
        QStringLiteral("Images (*.png *.jpg *.jpeg *.bmp *.gif);;All Files (*)"));
    if (!path.isEmpty())
        m_model.chooseLogo(path);
}

void ReceiptSettingsSection::askToRemoveLogo()
{
    QMessageBox ask(QMessageBox::Question, QStringLiteral("Remove the company logo?"),
                    QStringLiteral("Remove the company logo?"), QMessageBox::Cancel, this);
    ask.setInformativeText(QStringLiteral("Receipts will print without a logo. You can upload it again at any time."));
    QPushButton* remove = ask.addButton(QStringLiteral("Remove Logo"), QMessageBox::DestructiveRole);
    ask.setDefaultButton(QMessageBox::Cancel);
    ask.exec();
    if (ask.clickedButton() == remove)
        m_model.removeLogo();
}

void ReceiptSettingsSection::refresh()
{
    const AppSettings& settings = m_model.settings();
    showText(m_footer, settings.receiptFooter());
    showText(m_countryCode, settings.countryCallingCode());
    const QSignalBlocker blockThermal(m_thermalWidth);
    m_thermalWidth->setChecked(settings.useThermalReceiptWidth());
    const QSignalBlocker blockAutomatic(m_printAutomatically);
    m_printAutomatically->setChecked(settings.printReceiptAutomatically());

    m_removeLogo->setVisible(settings.hasLogo());
    if (settings.hasLogo()) {
        const QImage logo = QImage::fromData(*settings.logoPNG());
        m_logo->setPixmap(QPixmap::fromImage(logo.scaled(QSize(120, 48), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    } else {
        m_logo->setText(QStringLiteral("No logo"));
    }

    m_printer->clear();
    int widest = 0;
    for (const ReceiptSettingsModel::PrinterChoice& choice : m_model.printerChoices()) {
        m_printer->addItem(choice.label);
        widest = std::max(widest, m_printer->fontMetrics().horizontalAdvance(choice.label));
    }
    // Room for the longest name, the field's padding and its arrow, so no queue is cut short.
    m_printer->setMinimumWidth(std::min(widest + 56, 400));
    m_printer->setCurrentIndex(int(m_model.chosenPrinterIndex()));
    m_printerWarning->setVisible(m_model.isChosenPrinterMissing());
    m_printerMessage->setText(m_model.printerTestMessage().value_or(QString()));
    m_printerMessage->setVisible(m_model.printerTestMessage().has_value());

    m_preview->setReceipt(m_model.sampleReceipt(), settings.useThermalReceiptWidth());
}

CashDrawerSettingsSection::CashDrawerSettingsSection(ReceiptSettingsModel& model, QWidget* parent)
    : SettingsSection(QStringLiteral("Cash Drawer"), parent)
    , m_model(model)
{
    QGridLayout* form = addForm(addCard());
    m_enabled = new QCheckBox(QStringLiteral("Cash Drawer Enabled"), this);
    addRow(form, QString(), m_enabled);
    connect(m_enabled, &QCheckBox::toggled, &m_model, &ReceiptSettingsModel::setCashDrawerEnabled);

    m_connection = new QComboBox(this);
    for (CashDrawerConnection connection : CashDrawerConnections::all)
        m_connection->addItem(CashDrawerConnections::label(connection));
    addRow(form, QStringLiteral("Drawer Connected"), m_connection);
    connect(m_connection, &QComboBox::activated, this,
            [this](int index) { m_model.setDrawerConnection(CashDrawerConnections::all.at(size_t(index))); });

    m_pin = new QComboBox(this);
    for (DrawerPin pin : DrawerPins::all)
        m_pin->addItem(DrawerPins::label(pin));
    addRow(form, QStringLiteral("Drawer Pin"), m_pin);
    connect(m_pin, &QComboBox::activated, this,
            [this](int index) { m_model.setDrawerPin(DrawerPins::all.at(size_t(index))); });

    m_openOnCashSale = new QCheckBox(QStringLiteral("Open Automatically on Cash Sale"), this);
    addRow(form, QString(), m_openOnCashSale);
    connect(m_openOnCashSale, &QCheckBox::toggled, &m_model, &ReceiptSettingsModel::setOpenOnCashSale);

    m_test = new QPushButton(QStringLiteral("Test Drawer"), this);
    auto* testRow = new QHBoxLayout;
    testRow->addWidget(m_test);
    testRow->addStretch();
    form->addLayout(testRow, form->rowCount(), 1);
    connect(m_test, &QPushButton::clicked, &m_model, &ReceiptSettingsModel::testDrawer);
    m_message = Theme::label(QString(), Theme::Text::note, this);
    addNote(form, m_message);

    connect(&m_model, &ReceiptSettingsModel::changed, this, &CashDrawerSettingsSection::refresh);
    refresh();
}

void CashDrawerSettingsSection::refresh()
{
    const AppSettings& settings = m_model.settings();
    const QSignalBlocker blockEnabled(m_enabled);
    m_enabled->setChecked(settings.cashDrawerEnabled());
    const CashDrawerConnection connection = CashDrawerConnections::fromRaw(settings.cashDrawerConnectionRaw());
    m_connection->setCurrentIndex(connection == CashDrawerConnection::receiptPrinter ? 1 : 0);
    m_pin->setCurrentIndex(DrawerPins::fromRaw(settings.cashDrawerPinRaw()) == DrawerPin::pin5 ? 1 : 0);
    const QSignalBlocker blockOpen(m_openOnCashSale);
    m_openOnCashSale->setChecked(settings.cashDrawerOpenOnCashSale());

    // The rows below the switch mean nothing while it is off; the pin only for a real drawer.
    const bool enabled = settings.cashDrawerEnabled();
    m_connection->setEnabled(enabled);
    m_pin->setEnabled(enabled && connection == CashDrawerConnection::receiptPrinter);
    m_openOnCashSale->setEnabled(enabled);

    m_message->setText(m_model.drawerTestMessage().value_or(QString()));
    m_message->setVisible(m_model.drawerTestMessage().has_value());
    Theme::setKind(m_message, m_model.drawerTestFailed() ? "error" : "note");
}

#include "ui/products/newsuppliersheet.h"

#include "stock/productsviewmodel.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

NewSupplierSheet::NewSupplierSheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent)
    : QDialog(parent)
    , m_model(model)
    , m_onCreate(std::move(onCreate))
    , m_name(new QLineEdit(this))
    , m_error(new ErrorLabel(this))
{
    const QString title = QStringLiteral("New Supplier");
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setFixedWidth(400);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    m_create = buttons->addButton(QStringLiteral("Create Supplier"), QDialogButtonBox::AcceptRole);
    m_create->setDefault(true);
    Theme::markPrimary(m_create);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(Theme::label(title, Theme::Text::heading, this));
    addLabelledField(layout, QStringLiteral("Supplier name"), m_name);
    layout->addWidget(
        Theme::label(QStringLiteral("You can add phone, email, and address later from the Suppliers screen."),
                     Theme::Text::note, this));
    layout->addWidget(m_error);
    layout->addSpacing(4);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Not through accepted(): the sheet closes only once the supplier is made.
    connect(m_create, &QPushButton::clicked, this, &NewSupplierSheet::create);
}

void NewSupplierSheet::create()
{
    const Creation<Supplier> made = m_model.createSupplier(m_name->text());
    m_error->setMessage(made.errorMessage);
    if (!made.record) {
        m_name->setFocus();
        adjustSize();
        return;
    }
    m_onCreate(made.record);
    accept();
}

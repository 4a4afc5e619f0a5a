#include "ui/products/newsuppliersheet.h"

#include "ui/style/theme.h"

#include <QLabel>
#include <QVBoxLayout>

NewSupplierSheet::NewSupplierSheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent)
    : NewRecordSheet(QStringLiteral("New Supplier"), QStringLiteral("Create Supplier"),
                     QStringLiteral("Supplier name"), model, std::move(onCreate), parent)
{
    form()->addWidget(
        Theme::label(QStringLiteral("You can add phone, email, and address later from the Suppliers screen."),
                     Theme::Text::note, this));
}

Creation<Supplier> NewSupplierSheet::create()
{
    return model().createSupplier(nameField()->text());
}

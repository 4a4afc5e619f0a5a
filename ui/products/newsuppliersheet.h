#pragma once

#include "records/supplier.h"
#include "ui/products/newrecordsheet.h"

// "New Supplier" over the product form: just the name; the rest is filled in on the Suppliers
// screen.
class NewSupplierSheet : public NewRecordSheet<Supplier> {
    Q_OBJECT

public:
    NewSupplierSheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent = nullptr);

private:
    Creation<Supplier> create() override;
};

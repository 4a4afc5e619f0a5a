#pragma once

#include "records/category.h"
#include "ui/products/newrecordsheet.h"

#include <vector>

class QComboBox;

// "New Category" over the product form: a name and a tile colour.
class NewCategorySheet : public NewRecordSheet<Category> {
    Q_OBJECT

public:
    // The tile colours offered, grey first as on a new category.
    struct Swatch {
        const char* name;
        const char* hex;
    };
    static const std::vector<Swatch>& swatches();

    NewCategorySheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent = nullptr);

    QComboBox* colorPicker() const { return m_color; }

private:
    Creation<Category> create() override;

    QComboBox* m_color;
};

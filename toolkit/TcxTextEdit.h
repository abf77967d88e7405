#pragma once

#include "export/zel_toolkit_export.h"

#include <QLineEdit>

/// A one-line text edit for texts of any length.
class ZEL_TOOLKIT_EXPORT TcxTextEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit TcxTextEdit(QWidget *parent = nullptr);
    ~TcxTextEdit() override;
};

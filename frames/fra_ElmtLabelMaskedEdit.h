#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/ElementValue.h"
#include "toolkit/TFrame.h"
#include "ui_fra_ElmtLabelMaskedEdit.h"

/// One line of a page: a label as the caption and an edit whose input mask the page sets.
class ZEL_COMMONFRAMES_EXPORT TfraElmtLabelMaskedEdit : public TFrame, public Ui::TfraElmtLabelMaskedEdit
{
    Q_OBJECT
public:
    explicit TfraElmtLabelMaskedEdit(QWidget *owner = nullptr);
    ~TfraElmtLabelMaskedEdit() override;

    /// The element's value as a whole (see ElementValue.h); never nil, a child of the frame.
    Zel::ElementValue *const Value;
};

#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/ElementValue.h"
#include "toolkit/TFrame.h"
#include "ui_fra_ElmtLabelPictureField.h"

/// One line of a page: a label as the caption and a field for texts of at most fifteen characters.
class ZEL_COMMONFRAMES_EXPORT TfraElmtLabelPictureField : public TFrame, public Ui::TfraElmtLabelPictureField
{
    Q_OBJECT
public:
    explicit TfraElmtLabelPictureField(QWidget *owner = nullptr);
    ~TfraElmtLabelPictureField() override;

    /// The element's value as a whole (see ElementValue.h); never nil, a child of the frame.
    Zel::ElementValue *const Value;
};

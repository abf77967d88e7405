#pragma once

#include "export/zel_toolkit_export.h"

#include <QComboBox>

namespace Zel
{

/// What the drop-down lists have in common: a list that opens as a scrolling list, at least as wide as the
/// box and wide enough for long texts, and a chosen text that is shown whole while the mouse rests on it when
/// the box has no room for all of it.
class ZEL_TOOLKIT_EXPORT ChoiceBox : public QComboBox
{
    Q_OBJECT
public:
    ~ChoiceBox() override;
    void showPopup() override;

protected:
    explicit ChoiceBox(QWidget *parent);
    /// The chosen text with "..." for what the box has no room for,
    void initStyleOption(QStyleOptionComboBox *option) const override;
    bool event(QEvent *event) override; ///< and whole under the mouse then.
};

} // namespace Zel

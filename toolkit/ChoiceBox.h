#pragma once

#include "export/zel_toolkit_export.h"

#include <QComboBox>

namespace Zel
{

/// The base of the drop-down lists. The list opens as a scrolling list, at least as wide as the box and wide
/// enough for long texts. When the chosen text is too long for the box, a tool tip shows the whole text.
class ZEL_TOOLKIT_EXPORT ChoiceBox : public QComboBox
{
    Q_OBJECT
public:
    ~ChoiceBox() override;
    void showPopup() override;

protected:
    explicit ChoiceBox(QWidget *parent);
    /// Ends a chosen text that is too long for the box with "...".
    void initStyleOption(QStyleOptionComboBox *option) const override;
    bool event(QEvent *event) override; ///< Shows the tool tip for a chosen text that is too long.
};

} // namespace Zel

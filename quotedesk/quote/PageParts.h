#pragma once

#include "look/TextLabel.h"

namespace QuoteDesk
{

class Banner;

/// Puts the widgets in the tab order before @p next, one after the other.
void putBefore(QWidget &next, const QList<QWidget *> &widgets);
/// Puts the buttons of a banner in the tab order before @p next, above which the banner stands.
void putBefore(QWidget &next, const Banner &banner);

/// The label of a field: in the colour of labels. Designs can use it.
class FieldLabel : public TextLabel
{
    Q_OBJECT
public:
    explicit FieldLabel(QWidget *parent = nullptr);
    ~FieldLabel() override;
};

/// A sentence under something: smaller, in the colour of labels. Designs can use it.
class NoteLabel : public TextLabel
{
    Q_OBJECT
public:
    explicit NoteLabel(QWidget *parent = nullptr);
    ~NoteLabel() override;
};

/// A line across a panel, one device pixel high.
class Separator : public QWidget
{
    Q_OBJECT
public:
    explicit Separator(QWidget *parent = nullptr);
    ~Separator() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace QuoteDesk

#pragma once

#include "desk/Preferences.h"
#include "look/TextLabel.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLineEdit>
#include <QRadioButton>
#include <QWidget>

namespace QuoteDesk
{

/// Radio buttons that are drawn as one bar. The chosen part has a tick, so that it is known without its
/// colour.
class ChoiceBar : public QWidget
{
    Q_OBJECT
public:
    /// @p count parts, whose texts follow with setTexts().
    explicit ChoiceBar(int count, QWidget *parent = nullptr);

    void setTexts(const QStringList &texts);
    int chosen() const { return m_group.checkedId(); }
    void choose(int part);
    QStringList texts() const;

Q_SIGNALS:
    /// The user has chosen another part.
    void picked(int part);

private:
    QButtonGroup m_group;
};

/// The three choices of colours, each with a small picture of a window.
class ThemeChoice : public QWidget
{
    Q_OBJECT
public:
    explicit ThemeChoice(QWidget *parent = nullptr);
    QSize minimumSizeHint() const override; ///< of the choices below each other

    void setTexts(const QStringList &texts);
    ColourScheme chosen() const { return static_cast<ColourScheme>(m_group.checkedId()); }
    void choose(ColourScheme colours);

Q_SIGNALS:
    void picked();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QButtonGroup m_group;
    QBoxLayout *m_layout;
};

/// A field that takes the next keys as a shortcut instead of executing it. Tab and Escape keep their meaning.
class KeyField : public QLineEdit
{
    Q_OBJECT
public:
    explicit KeyField(QWidget *parent = nullptr);
    void show(const QKeySequence &keys);

Q_SIGNALS:
    void typed(const QKeySequence &keys);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

/// A thin upright or level line in the colour of separators.
class PanelEdge : public QWidget
{
public:
    explicit PanelEdge(Qt::Orientation orientation, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace QuoteDesk

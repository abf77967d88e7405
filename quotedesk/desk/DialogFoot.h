#pragma once

#include <QString>

class QDialog;
class QDialogButtonBox;
class QVBoxLayout;

namespace QuoteDesk
{

/// Gives a dialog its layout: a column for the content, and below it the buttons on a foot across the whole
/// width. Returns the column.
QVBoxLayout *layOutDialog(QDialog &dialog, QDialogButtonBox &buttons);

/// Opens a dialog in the size that the user gave it the last time, otherwise in its present size. The size is
/// at most nine tenths of the screen. @p name identifies the dialog in the user's preferences.
void rememberSize(QDialog &dialog, const QString &name);

} // namespace QuoteDesk

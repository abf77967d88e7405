#include "toolkit/TcxTextEdit.h"

#include <limits>

TcxTextEdit::TcxTextEdit(QWidget *parent) : QLineEdit(parent)
{
    // By default QLineEdit silently cuts a text off at 32767 characters.
    setMaxLength(std::numeric_limits<int>::max());
}

TcxTextEdit::~TcxTextEdit() = default;

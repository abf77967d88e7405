#include "toolkit/TcxTextEdit.h"

#include <limits>

TcxTextEdit::TcxTextEdit(QWidget *parent) : QLineEdit(parent)
{
    // The plain edit cuts a longer text off without a word.
    setMaxLength(std::numeric_limits<int>::max());
}

TcxTextEdit::~TcxTextEdit() = default;

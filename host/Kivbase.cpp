#include "host/Kivbase.h"

TFundItem::TFundItem(int fundID) : m_fundID(fundID) {}

#pragma once

/// @file
/// For hosts that include it: what this header declared has headers of its own.

#include "toolkit/ListModel.h"
#include "toolkit/TListItems.h"
#include "toolkit/TTreeNodes.h"
#include "toolkit/TreeModel.h"

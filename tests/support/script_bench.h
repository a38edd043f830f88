#pragma once

// The engine on the recording backend, with what it holds printed by failed expectations.
#include "recording/script_bench.h"
#include "support/printers.h"

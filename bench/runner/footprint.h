// The rows of the library alone: what it holds, and whether it holds more and more.
#pragma once

#include "runner/results.h"
#include "runner/stage.h"

namespace bench {

void MeasureLoading(Results& results);
void MeasureQueue(Results& results);
void MeasureReconnects(StandInService& service, Results& results);
void MeasureCycles(Results& results);
void MeasureIdle(Results& results);

}  // namespace bench

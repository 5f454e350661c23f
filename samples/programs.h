// The sample programs, one for each kind of processor.
#pragma once

#include "samples/firmware.h"

namespace scan695::samples {

Bytes DosingPump();      // processor 80166
Bytes InjectionTimer();  // processor 296sa_e
Bytes EngineControl();   // processor TRI

}  // namespace scan695::samples

#include "platform/call_frame.h"

namespace KorvuISD {

RecursiveMutex g_apiMutex;

}  // namespace KorvuISD

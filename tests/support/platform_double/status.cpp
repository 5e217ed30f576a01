#include "status.h"

#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {

DWORD ErrorOf(Status status) {
  switch (status) {
    case Status::kSuccess:
      return ERROR_SUCCESS;
    case Status::kPending:
      return ERROR_IO_PENDING;
    case Status::kMoreData:
      return ERROR_MORE_DATA;
    case Status::kInvalidParameter:
      return ERROR_INVALID_PARAMETER;
    case Status::kAccessDenied:
      return ERROR_ACCESS_DENIED;
    case Status::kNameNotFound:
      return ERROR_FILE_NOT_FOUND;
    case Status::kPipeBusy:
      return ERROR_PIPE_BUSY;
    case Status::kPipeDisconnected:
      return ERROR_PIPE_NOT_CONNECTED;
    case Status::kPipeClosing:
      return ERROR_NO_DATA;
    case Status::kPipeConnected:
      return ERROR_PIPE_CONNECTED;
    case Status::kPipeListening:
      return ERROR_PIPE_LISTENING;
    case Status::kTimeout:
      return ERROR_SEM_TIMEOUT;
    case Status::kCancelled:
      return ERROR_OPERATION_ABORTED;
    case Status::kPipeBroken:
      return ERROR_BROKEN_PIPE;
    case Status::kNotFound:
      return ERROR_NOT_FOUND;
  }
  return ERROR_GEN_FAILURE;
}

BOOL Answer(Status status) {
  if (status == Status::kSuccess) return TRUE;
  SetLastError(ErrorOf(status));
  return FALSE;
}

}  // namespace platform_double

#include "KorvuTabletSettingsAPI.h"
#include "core/current_client.h"

void KORVUISD_CALL KorvuISD_SendManual(const wchar_t* message, void* context,
                                       ManualReplyCallback callback) {
  KorvuISD::CurrentClient()->SendManual(message, context, callback);
}

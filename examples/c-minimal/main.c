/* Connects, changes one setting, waits for the callback that tells of it, and ends. */

#include <stdio.h>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"

#define WANTED_TILT_SENSITIVITY 37
#define CONNECT_TIMEOUT_MS 5000
#define ANSWER_TIMEOUT_MS 10000

/* Called on the library's thread, with the library's lock held: it only passes on what it heard,
 * and does not wait for anything. */
static void KORVUISD_CALL OnTiltSensitivity(void* context, int32_t value) {
  HANDLE wantedValueArrived = context;
  printf("tilt sensitivity: %d\n", (int)value);
  if (value == WANTED_TILT_SENSITIVITY) SetEvent(wantedValueArrived);
}

/* Only for a client that connected: another one would not return from KorvuISD_Shutdown. */
static int ChangeAndWait(HANDLE wantedValueArrived) {
  /* It comes with the values that the service holds, if it is that already, or after the change. */
  KorvuISD_SetTiltSensitivity(WANTED_TILT_SENSITIVITY, 0);
  if (WaitForSingleObject(wantedValueArrived, ANSWER_TIMEOUT_MS) != WAIT_OBJECT_0) {
    fputs("the settings service did not take the change\n", stderr);
    return 1;
  }
  return 0;
}

int main(void) {
  HANDLE wantedValueArrived = CreateEventW(NULL, TRUE, FALSE, NULL);
  KorvuISD_Callbacks callbacks = {0};
  int result;

  if (!wantedValueArrived) return 1;
  callbacks.OnTiltSensitivity = OnTiltSensitivity;
  KorvuISD_SetAPIVersion(KORVUISD_API_VERSION_MAX);
  KorvuISD_RegisterCallbacks(&callbacks, wantedValueArrived);

  if (KorvuISD_Connect(CONNECT_TIMEOUT_MS) != KorvuISD_ErrorNone) {
    fputs("no settings service in this session\n", stderr);
    return 1;
  }
  puts("connected");
  result = ChangeAndWait(wantedValueArrived);
  KorvuISD_Shutdown(); /* from here on nobody calls back */
  CloseHandle(wantedValueArrived);
  if (result == 0) puts("done");
  return result;
}

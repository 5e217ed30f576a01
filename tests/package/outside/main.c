/* Uses an import by name, the one by ordinal, and both kinds of callbacks. */

#include <stdio.h>
#include <wchar.h>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"

#define WANTED 41
#define REQUEST \
  L"{\"GetVal\":\"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\TiltSensitivity\"}"

static HANDLE g_changed;
static HANDLE g_replied;

static void KORVUISD_CALL OnTiltSensitivity(void* context, int32_t value) {
  if (context == &g_changed && value == WANTED) SetEvent(g_changed);
}

static void KORVUISD_CALL OnReply(void* context, const wchar_t* text, size_t* partLengths,
                                  size_t partCount) {
  if (context == &g_replied && partCount == 2 && partLengths[1] == 2 &&
      wcscmp(text + partLengths[0], L"41") == 0) {
    SetEvent(g_replied);
  }
}

static int Await(HANDLE event, const char* what) {
  if (WaitForSingleObject(event, 30000) == WAIT_OBJECT_0) return 0;
  fprintf(stderr, "%s did not come\n", what);
  return 1;
}

int main(void) {
  KorvuISD_Callbacks callbacks = {0};
  int failures;

  g_changed = CreateEventW(NULL, TRUE, FALSE, NULL);
  g_replied = CreateEventW(NULL, TRUE, FALSE, NULL);
  callbacks.OnTiltSensitivity = OnTiltSensitivity;
  KorvuISD_SetAPIVersion(KORVUISD_API_VERSION_MAX);
  KorvuISD_RegisterCallbacks(&callbacks, &g_changed);
  if (KorvuISD_Connect(30000) != KorvuISD_ErrorNone) {
    fputs("no connection\n", stderr);
    return 1;
  }
  KorvuISD_SetTiltSensitivity(WANTED, 0);
  failures = Await(g_changed, "the callback");
  KorvuISD_SendManual(REQUEST, &g_replied, OnReply);
  failures += Await(g_replied, "the reply");
  KorvuISD_Shutdown();
  return failures;
}

// A slider that follows the service, whoever changes the setting.

const tilt = document.querySelector('#tilt');
const state = document.querySelector('#state');

function show(name, value) {
  if (name === 'tiltSensitivity') tilt.value = value;
  if (name === 'isServiceThere') state.textContent = value ? '' : 'The settings service is away.';
}

window.korvu.onEvent(show);
const { isServiceThere, values } = await window.korvu.values();
show('isServiceThere', isServiceThere);
for (const [name, value] of Object.entries(values)) show(name, value);

tilt.addEventListener('input', async () => {
  try {
    await window.korvu.set('setTiltSensitivity', Number(tilt.value));
  } catch (error) {
    state.textContent = error.message;
    if (error.stored !== undefined) tilt.value = error.stored;
  }
});

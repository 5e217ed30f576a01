'use strict';

const { integer } = require('./arguments.js');
const { KorvuError } = require('./errors.js');
const { hub } = require('./process.js');
const { Settings } = require('./settings.js');

const { native } = hub;
const kHighestUint32 = 0xffffffff;

const menuButtonId = (menu, button) => native.buildMenuButtonId(
    integer('menu', menu, 0, 0xff), integer('button', button, 0, 0xff));
const menuIndex = (id) => native.getMenuIndex(integer('id', id, 0, kHighestUint32));
const buttonIndex = (id) => native.getButtonIndex(integer('id', id, 0, kHighestUint32));

const LogLevel = Object.freeze({ verbose: 0, info: 1, error: 2, off: 3 });
const Feature = Object.freeze({ dockable: 0, opaqueMode: 1 });
const ButtonFunction = Object.freeze({ keystrokes: 8, runApp: 23, runAppOption: 88 });

module.exports = {
  Settings, KorvuError, LogLevel, Feature, ButtonFunction, menuButtonId, menuIndex, buttonIndex,
};

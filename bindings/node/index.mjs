// For import: the same module as for require, so that a program that does both has one of it.
import korvu from './lib/index.js';

export const {
  Settings, KorvuError, LogLevel, Feature, ButtonFunction, menuButtonId, menuIndex, buttonIndex,
} = korvu;

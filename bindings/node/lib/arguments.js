'use strict';
// What the arguments of the methods must be. The library takes whatever comes; here is stopped what
// would arrive at the service as something else, or not at all.

function describe(value) {
  return typeof value === 'string' ? JSON.stringify(value) : String(value);
}

function integer(name, value, minimum, maximum) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, not ${describe(value)}`);
  }
  if (!Number.isInteger(value) || value < minimum || value > maximum) {
    throw new RangeError(
        `${name} must be a whole number from ${minimum} to ${maximum}, not ${describe(value)}`);
  }
  return value;
}

const kLowest = -0x80000000;
const kHighest = 0x7fffffff;

function int32(name, value) {
  return integer(name, value, kLowest, kHighest);
}

// Texts go out as they are, lone surrogates too. But they end at their first NUL in the library.
function text(name, value) {
  if (typeof value !== 'string') {
    throw new TypeError(`${name} must be a string, not ${describe(value)}`);
  }
  if (value.includes('\0')) {
    throw new RangeError(`${name} must not contain a NUL character: the text would end there`);
  }
  return value;
}

function object(name, value) {
  if (typeof value !== 'object' || value === null) {
    throw new TypeError(`${name} must be an object, not ${describe(value)}`);
  }
  return value;
}

// Milliseconds, Infinity for no limit.
function duration(name, value) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, not ${describe(value)}`);
  }
  if (!(value >= 0)) {
    throw new RangeError(`${name} must be a number of milliseconds, not ${describe(value)}`);
  }
  return value;
}

// A property of an options object, which may be missing.
function option(options, name, check, fallback) {
  if (options === undefined) return fallback;
  const value = object('options', options)[name];
  return value === undefined ? fallback : check(`options.${name}`, value);
}

module.exports = { duration, int32, integer, kHighest, object, option, text };

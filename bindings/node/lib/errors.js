'use strict';

// What a promise of this package rejects with. `code` says what happened; the codes are described in
// index.d.ts.
class KorvuError extends Error {
  constructor(code, message, details) {
    super(message);
    this.name = 'KorvuError';
    this.code = code;
    Object.assign(this, details);
  }
}

module.exports = { KorvuError };

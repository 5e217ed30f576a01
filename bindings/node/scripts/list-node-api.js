'use strict';
// Prints a line for each function of Node-API version 8, for src/node_api.h.

const { symbols } = require('node-api-headers');

for (const names of Object.values(symbols.v8)) {
  for (const name of names) console.log(`KORVU_NODE_API(${name})`);
}

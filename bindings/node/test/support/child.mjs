// Another Node as a child process. Its output goes to a file: under Wine it cannot write to a pipe.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { closeSync, openSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { patience } from './wait.mjs';

let count = 0;

// `code` is null if it was ended by a signal.
export async function run(args, { program = process.execPath, input } = {}) {
  const file = join(process.env.KORVU_WORK, `child-${process.pid}-${++count}.out`);
  const output = openSync(file, 'w');
  const child = spawn(program, args, { stdio: [input ?? 'ignore', output, output] });
  closeSync(output);
  try {
    const [code] = await patience(once(child, 'exit'), `the end of ${args.join(' ')}`);
    return { code, output: readFileSync(file, 'utf8').replaceAll('\r\n', '\n') };
  } catch (error) {
    child.kill();
    throw new Error(`${error.message}; it printed: ${readFileSync(file, 'utf8')}`);
  }
}

// The stand-in settings service as a process of the test's own.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { patience } from './wait.mjs';

const program = process.env.KORVU_SERVICE;

export class Service {
  #process;
  #lines = [];
  #unfinished = '';
  #onLine = () => {};
  #hasEnded = false;

  static async start() {
    const service = new Service();
    await service.#start();
    return service;
  }

  async #start() {
    this.#process = spawn(program, ['--exit-with-stdin'], { stdio: ['pipe', 'pipe', 'ignore'] });
    this.#process.stdout.on('data', (data) => {
      const lines = (this.#unfinished + data).split(/\r?\n/);
      this.#unfinished = lines.pop();
      this.#lines.push(...lines);
      this.#onLine();
    });
    this.#process.on('exit', () => {
      this.#hasEnded = true;
      this.#onLine();
    });
    const line = await this.#readLine();
    if (line !== 'ready') throw new Error(`the service printed "${line}"`);
  }

  async #readLine() {
    while (this.#lines.length === 0) {
      if (this.#hasEnded) throw new Error('the service has ended');
      await patience(new Promise((resolve) => { this.#onLine = resolve; }), 'the service to answer');
    }
    return this.#lines.shift();
  }

  // Returns what it printed before its "ok".
  async command(line) {
    this.#process.stdin.write(`${line}\n`);
    const printed = [];
    for (;;) {
      const answer = await this.#readLine();
      if (answer === 'ok') return printed;
      if (answer.startsWith('error')) throw new Error(`${line}: ${answer}`);
      printed.push(answer);
    }
  }

  async stored(key) {
    const [line] = await this.command(`get ${key}`);
    return line.slice(line.indexOf(' = ') + 3);
  }

  async kill() {
    this.#process.kill();
    await this.#ended();
  }

  async stop() {
    if (this.#hasEnded) return;
    this.#process.stdin.end();
    await this.#ended();
  }

  async #ended() {
    if (this.#hasEnded) return;
    await patience(once(this.#process, 'exit'), 'the service to end');
  }
}

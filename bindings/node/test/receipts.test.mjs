// How answers are judged, in the order of events that a service cannot be made to bring about.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { KorvuError } from 'korvu-settings';
import receiptsModule from '../lib/receipts.js';

const { Receipts } = receiptsModule;
const kFence = String.raw`{"GetVal":"ComponentsDriver\\ShowHoverClickUI"}`;
const kProbe = '{"Connected":"?"}';
const kRead = '{"GetVal":"Key"}';

function setUp() {
  const requests = [];
  const receipts = new Receipts({
    request: (message, onAnswer) => requests.push({ message, onAnswer }),
  });
  const answer = (message, ...texts) => {
    assert.equal(requests[0]?.message, message);
    requests.shift().onAnswer(...texts);
  };
  const add = (wanted) => receipts.add({
    what: 'set',
    reads: ['Key'],
    setting: 'Key',
    timeoutMs: Infinity,
    judge: ([stored], isOvertaken) => {
      if (!isOvertaken && stored !== wanted) throw new KorvuError('ERR_KORVU_NOT_TAKEN', stored);
      return stored;
    },
  });
  return { receipts, requests, answer, add };
}

test('a change is confirmed by what is read after the fence', async () => {
  const { answer, add, requests } = setUp();
  const change = add('37');
  answer(kFence, 'k', '1');
  answer(kRead, 'Key', '37');
  assert.equal(await change, '37');
  assert.equal(requests.length, 0);
});

test('another value is one that was not taken', async () => {
  const { answer, add } = setUp();
  const rejected = assert.rejects(add('37'), { code: 'ERR_KORVU_NOT_TAKEN' });
  answer(kFence, 'k', '1');
  answer(kRead, 'Key', '12');
  await rejected;
});

test('another value is a loss if a connection was opened meanwhile', async () => {
  const { receipts, answer, add } = setUp();
  const rejected = assert.rejects(add('37'), { code: 'ERR_KORVU_LOST' });
  receipts.putInDoubt();
  answer(kFence, 'k', '1');
  answer(kRead, 'Key', '12');
  await rejected;
});

test('a loss puts in doubt what was called before it was known', async () => {
  const { answer, add } = setUp();
  const lost = assert.rejects(add('37'), { code: 'ERR_KORVU_LOST' });
  const called = assert.rejects(add('38'), { code: 'ERR_KORVU_LOST' });
  answer(kFence, '', '');
  await lost;
  answer(kFence, 'k', '1');
  answer(kRead, 'Key', '12');
  await called;
});

test('an empty value counts if a probe behind it is answered', async () => {
  for (const [probe, outcome] of [['1', ''], ['', 'ERR_KORVU_LOST']]) {
    const { answer, add } = setUp();
    const change = add('').catch(({ code }) => code);
    answer(kFence, 'k', '1');
    answer(kRead, 'Key', '');
    answer(kProbe, '?', probe);
    assert.equal(await change, outcome);
  }
});

test('a connection that breaks while values are read leaves nothing known', async () => {
  const { answer, add } = setUp();
  const rejected = assert.rejects(add('37'), { code: 'ERR_KORVU_LOST' });
  answer(kFence, 'k', '1');
  answer(kRead, '', '');
  answer(kProbe, '?', '1');
  await rejected;
});

test('one fence at a time, and what is called meanwhile is in the next round', async () => {
  const { answer, add, requests } = setUp();
  const first = add('37');
  const second = add('38');
  assert.equal(requests.length, 1);
  answer(kFence, 'k', '1');
  answer(kRead, 'Key', '38');
  // Overtaken, so it resolves with what is stored.
  assert.equal(await first, '38');
  answer(kFence, 'k', '1');
  answer(kRead, 'Key', '38');
  assert.equal(await second, '38');
});

// What `zephctl state` does, with the npm package ws: node state.js PORT DIRECTORY, which has it in node_modules.
'use strict';
const path = require('path');
const {createRequire} = require('module');
const WebSocket = createRequire(path.join(process.argv[3], 'none.js'))('ws');

const link = new WebSocket(`ws://127.0.0.1:${process.argv[2]}/`, 'event-protocol');
link.on('open', () => {
  for (const [event, members] of [['set_app_name', {name: 'Zephlink'}], ['request_current_state', null]]) {
    link.send(JSON.stringify([event, members, 'zephlink_sdk']) + '\n');
  }
});
link.on('message', (data) => {
  const [event, members] = JSON.parse(data);
  if (event !== 'report_current_state') return;
  console.log(JSON.stringify(members, null, '\t'));
  link.close();
});

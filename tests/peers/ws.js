// A daemon on the npm package ws: node ws.js ANSWERS, a JSON file with the texts of the reports for each request. It
// sends a ping and answers after the pong.
'use strict';
const fs = require('fs');
const path = require('path');
const {createRequire} = require('module');
const {WebSocketServer} = createRequire(path.join(process.env.PEERS_MODULES, 'none.js'))('ws');

const answers = JSON.parse(fs.readFileSync(process.argv[2], 'utf8'));
const server = new WebSocketServer({
  host: '127.0.0.1',
  port: 0,
  handleProtocols: (offered) => (offered.has('event-protocol') ? 'event-protocol' : false),
});
server.on('listening', () => console.log(`listening on 127.0.0.1:${server.address().port}`));
server.on('connection', (socket) => {
  socket.on('message', (data) => {
    const reports = answers[JSON.parse(data.toString())[0]] || [];
    if (reports.length === 0) return;
    socket.once('pong', () => reports.forEach((report) => {
      // In three fragments, as a stream would be sent.
      const third = Math.ceil(report.length / 3);
      socket.send(report.slice(0, third), {fin: false});
      socket.send(report.slice(third, 2 * third), {fin: false});
      socket.send(report.slice(2 * third), {fin: true});
    }));
    socket.ping('alive?');
  });
});

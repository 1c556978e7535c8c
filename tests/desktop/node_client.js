// A phone on Node's ws library: node_client.js URL. Plays one conversation and prints what it saw as JSON.
const WebSocket = require('ws')

const seen = { texts: [], binaries: 0, pongs: [], closed: null }
const phone = new WebSocket(process.argv[2])

phone.on('message', (data, isBinary) => {
  if (isBinary) seen.binaries++
  else seen.texts.push(JSON.parse(data))
  if (seen.texts.length === 1) {
    phone.send('{"action":"text"}')
    phone.send(Buffer.from('{"action":"binary"}'), { binary: true })
    phone.ping('idle')
    phone.send('{"action":', { fin: false })
    phone.ping('inside')
    phone.send('"fragmented"}', { fin: true })
    phone.ping('last')
  }
})
phone.on('pong', (data) => {
  seen.pongs.push(data.toString())
  if (seen.pongs.length === 3) phone.close(1000, 'done')
})
phone.on('close', (code) => {
  seen.closed = code
  seen.extensions = phone.extensions
  console.log(JSON.stringify(seen))
})
phone.on('error', (error) => {
  console.error(String(error))
  process.exit(1)
})

"""At rest the program does nothing at all, and what comes and goes leaves nothing behind."""
import time

from brenvale_desk import DeskTest, Recorder, main, wait_until


class IdleTest(DeskTest):
    WATCHED_SECONDS = 3

    def quiet_for(self, program, seconds):
        before = program.wake_ups()
        time.sleep(seconds)  # the thing measured, not a wait for something
        return program.wake_ups() == before

    def assert_sleeps(self, program):
        """Start-up work may still run at first; then no thread may wake up any more."""
        wait_until(lambda: self.quiet_for(program, self.WATCHED_SECONDS),
                   f'{self.WATCHED_SECONDS} s without a wake-up: {program.wake_ups()}')

    def test_no_wake_ups_without_a_phone(self):
        self.assert_sleeps(self.start())

    def test_no_wake_ups_with_phones_that_say_nothing(self):
        Recorder(self.desk)
        program = self.start()
        phones = [self.connect(program) for _ in range(3)]
        phones[0].send_json(app='Mail', title='Ann', body='Hello')
        phones[1].send_json(action='clipboard', text='copied')
        phones[2].ping()
        half_open = self.raw(program)
        half_open.socket.sendall(b'GET / HTTP/1.1\r\n')
        self.assert_sleeps(program)

    def assert_settles(self, program, baseline):
        state = lambda: (program.descriptors(), len(program.threads()))
        wait_until(lambda: state() <= baseline, f'descriptors and threads {baseline}, not {state()}')

    def test_two_hundred_connections_leave_nothing_behind(self):
        program = self.start()
        self.connect(program).close()  # whatever is made once is made now
        wait_until(lambda: program.matching(r'.* failed: .*'))
        baseline = (program.descriptors(), len(program.threads()))
        for number in range(40):
            self.connect(program).close()
            self.connect(program).reset()
            broken = self.connect(program)
            broken.send_frame(3)
            broken.wait_for_end()
            broken.socket.close()
            refused = self.raw(program)
            refused.socket.sendall(refused.request(Origin='http://page.example'))
            refused.wait_for_end()
            refused.socket.close()
            self.raw(program).reset()
        self.assert_settles(program, baseline)
        self.connect(program).ping()

    def test_two_hundred_phones_at_once(self):
        program = self.start()
        self.connect(program).close()
        wait_until(lambda: program.matching(r'.* failed: .*'))
        baseline = (program.descriptors(), len(program.threads()))
        phones = [self.connect(program) for _ in range(200)]
        for phone in phones:
            phone.send_json(action='none')
        for phone in phones:
            phone.ping()
        for phone in phones:
            phone.reset()
        self.assert_settles(program, baseline)


if __name__ == '__main__':
    main()

#!/usr/bin/env python3
"""Tests zephlink-exporter with the real Prometheus: three simulated daemons, three exporters, one Prometheus.

Every query of the dashboard must return data, the alerts must fire and resolve when a daemon is killed and restarted,
promtool must accept the rules, and the exporter must stay within its resource limits. Everything is on loopback.
"""

import argparse
import json
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import urllib.parse
import urllib.request

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
EXAMPLES = ROOT / "examples" / "prometheus"
PATIENCE = 120
MAX_RESIDENT_KIB = 10 * 1024
MAX_CPU_SHARE = 0.01
MAX_SCRAPE_SECONDS = 0.005

failures = []


def check(fine, text):
    print(("ok      " if fine else "FAILED  ") + text, flush=True)
    if not fine:
        failures.append(text)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def fetch(url):
    with urllib.request.urlopen(url, timeout=10) as answer:
        return answer.read().decode()


def wait_for(condition, text):
    """Waits for a condition; treats OSError as false."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            if condition():
                return check(True, text)
        except OSError:
            pass
        time.sleep(0.2)
    check(False, f"{text} (not within {PATIENCE} s)")


class Machine:
    """A simulated daemon with a tunnel, and its exporter."""

    def __init__(self, programs, seed, log):
        self.programs, self.seed, self.log = programs, seed, log
        self.daemon_port, self.port = free_port(), free_port()
        self.instance = f"127.0.0.1:{self.port}"
        self.start_daemon()
        self.exporter = subprocess.Popen(
            [programs.exporter, "--daemon", f"127.0.0.1:{self.daemon_port}", "--listen", self.instance], stderr=log)

    def start_daemon(self):
        self.daemon = subprocess.Popen(
            [self.programs.zephsim, "--port", str(self.daemon_port), "--seed", str(self.seed), "--fast"],
            stdout=subprocess.PIPE, stderr=self.log, text=True)
        self.daemon.stdout.readline()  # it is listening
        for words in (["login", "demo@example.com", "demo"], ["connect", "us", "nyc"]):
            subprocess.run([self.programs.zephctl, "--port", str(self.daemon_port), *words], check=True,
                           stdout=subprocess.DEVNULL)

    def kill_daemon(self):
        self.daemon.kill()
        self.daemon.wait()

    def cpu_seconds(self):
        fields = pathlib.Path(f"/proc/{self.exporter.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def resident_kib(self):
        status = pathlib.Path(f"/proc/{self.exporter.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status)[1])

    def stop(self):
        self.exporter.send_signal(signal.SIGTERM)
        check(self.exporter.wait(10) == 0, f"the exporter on {self.instance} ends with status 0")
        self.kill_daemon()


class Prometheus:
    """Starts the server with the example's configuration, except for its targets and intervals."""

    def __init__(self, program, work, machines, log):
        targets = "\n".join(f"          - {machine.instance}" for machine in machines)
        config = (EXAMPLES / "prometheus.yml").read_text()
        config, replaced = re.subn(r"(?m)^          - .*(\n          - .*)*$", targets, config)
        assert replaced == 1
        config = config.replace("15s", "1s").replace("alerts.yml", str(EXAMPLES / "alerts.yml"))
        (work / "prometheus.yml").write_text(config)
        self.url = f"http://127.0.0.1:{free_port()}"
        self.process = subprocess.Popen(
            [program, f"--config.file={work}/prometheus.yml", f"--storage.tsdb.path={work}/data",
             f"--web.listen-address={self.url[7:]}", "--log.level=warn"], stdout=log, stderr=log)

    def api(self, path, **parameters):
        return json.loads(fetch(f"{self.url}/api/v1/{path}?{urllib.parse.urlencode(parameters)}"))["data"]

    def query(self, expression):
        return self.api("query", query=expression)["result"]

    def value(self, expression):
        """Returns the value of the only series; None for any other answer."""
        result = self.query(expression)
        return float(result[0]["value"][1]) if len(result) == 1 else None

    def firing(self, alert):
        return {found["labels"].get("instance") for found in self.api("alerts")["alerts"]
                if found["labels"]["alertname"] == alert and found["state"] == "firing"}

    def stop(self):
        self.process.terminate()
        self.process.wait()


def dashboard_queries():
    board = json.loads((EXAMPLES / "dashboard.json").read_text())
    for panel in board["panels"]:
        for target in panel["targets"]:
            expression = target["expr"].replace("$instance", ".*").replace("$__rate_interval", "30s")
            yield panel["title"], expression


def check_tools(text):
    for words, given in ((["check", "metrics"], text), (["check", "rules", EXAMPLES / "alerts.yml"], None),
                         (["test", "rules", EXAMPLES / "alerts_test.yml"], None)):
        run = subprocess.run(["promtool", *words], input=given, capture_output=True, text=True, check=False)
        said = run.stdout + run.stderr if run.returncode or given else ""
        check(run.returncode == 0 and not said, f"promtool {' '.join(map(str, words[:2]))} {said}".rstrip())


def check_unit(program):
    """Checks a copy of the unit that names the built program: systemd requires the program to exist."""
    if not shutil.which("systemd-analyze"):
        print("SKIPPED systemd-analyze is not installed")
        return
    with tempfile.TemporaryDirectory() as folder:
        unit = pathlib.Path(folder) / "zephlink-exporter.service"
        source = ROOT / "packaging" / "systemd" / unit.name
        unit.write_text(source.read_text().replace("=zephlink-exporter", f"={pathlib.Path(program).resolve()}"))
        run = subprocess.run(["systemd-analyze", "verify", "--man=no", unit], capture_output=True, text=True, check=False)
        check(run.returncode == 0 and not run.stderr, f"systemd-analyze verify {run.stderr}".rstrip())
        run = subprocess.run(["systemd-analyze", "security", "--offline=true", "--threshold=20", unit],
                             capture_output=True, text=True, check=False)
        check(run.returncode == 0, run.stdout.strip().splitlines()[-1].encode("ascii", "ignore").decode())


def show(prometheus, machines, seconds):
    wait_for(lambda: prometheus.value("sum(zephlink_up)") == len(machines), "Prometheus sees three daemons")
    # Rates and increases need some samples.
    wait_for(lambda: prometheus.value("min(count_over_time(zephlink_up[1m]))") >= 30, "30 scrapes of each")

    for title, expression in dashboard_queries():
        check(prometheus.query(expression), f"dashboard, {title}: {expression}")
    for expression in ("zephlink_up", 'zephlink_state{state="connected"} == 1',
                       "8 * sum by (instance) (rate(zephlink_connection_receive_bytes_total[30s]))"):
        result = prometheus.query(expression)
        check(len(result) == len(machines), f"a series for each machine: {expression}")
        for series in result:
            print(f"          {series['metric'].get('instance')} {series['value'][1]}")
    check(not prometheus.firing("ZephlinkDaemonDown"), "no alert for a daemon")

    lost = machines[1]
    of_lost = f'{{instance="{lost.instance}"}}'
    lost.kill_daemon()
    killed = time.monotonic()
    wait_for(lambda: prometheus.value("zephlink_up" + of_lost) == 0, "a killed daemon is down")
    print(f"          after {time.monotonic() - killed:.1f} s")
    check(not prometheus.query("zephlink_connection_up" + of_lost), "nothing old is shown of it")
    check(prometheus.value("sum(zephlink_up)") == len(machines) - 1, "the others are up")
    wait_for(lambda: prometheus.firing("ZephlinkDaemonDown") == {lost.instance}, "the alert fires for it alone")

    lost.start_daemon()
    started = time.monotonic()
    wait_for(lambda: prometheus.value("zephlink_up" + of_lost) == 1, "a restarted daemon is up")
    print(f"          after {time.monotonic() - started:.1f} s")
    wait_for(lambda: not prometheus.firing("ZephlinkDaemonDown"), "the alert ends")
    wait_for(lambda: prometheus.query(f"sum(rate(zephlink_connection_receive_bytes_total{of_lost}[10s])) > 0"),
             "its traffic is counted")
    check(prometheus.value("zephlink_exporter_link_losses_total" + of_lost) == 1, "one lost link is counted")

    steady = machines[0]
    cpu, begun = steady.cpu_seconds(), time.monotonic()
    time.sleep(seconds)
    share = (steady.cpu_seconds() - cpu) / (time.monotonic() - begun)
    check(share < MAX_CPU_SHARE, f"{share:.2%} of a core at a report and a scrape a second, over {seconds} s")
    check(steady.resident_kib() < MAX_RESIDENT_KIB, f"{steady.resident_kib()} KiB resident")
    durations = f'scrape_duration_seconds{{instance="{steady.instance}"}}[{seconds}s]'
    half, most = (prometheus.value(f"quantile_over_time({part}, {durations})") or float("inf") for part in (0.5, 0.95))
    check(half < MAX_SCRAPE_SECONDS, f"half of the scrapes within {half * 1000:.1f} ms, 95 % within {most * 1000:.1f} ms")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--seconds", type=int, default=60, help="how long the cost is measured")
    options = parser.parse_args()
    options.exporter = options.build / "tools/exporter/zephlink-exporter"
    options.zephsim = options.build / "simulator/zephsim"
    options.zephctl = options.build / "zephctl"

    check_unit(options.exporter)
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder)
        with open(work / "log", "w", encoding="utf-8") as log:
            machines = [Machine(options, seed, log) for seed in (1, 2, 3)]
            prometheus = Prometheus("prometheus", work, machines, log)
            try:
                show(prometheus, machines, options.seconds)
                check_tools(fetch(f"http://{machines[0].instance}/metrics"))
                for machine in machines:
                    machine.stop()
            finally:
                for process in [prometheus.process, *(p for m in machines for p in (m.daemon, m.exporter))]:
                    if process.poll() is None:
                        process.kill()
                        process.wait()
        if failures:
            print((work / "log").read_text())
    print(f"{len(failures)} failures")
    raise SystemExit(bool(failures))


main()

"""Runs the scripts of docs/python.md like a user."""

import doctest
import re
import signal

import zephlink as z
from conftest import BUILD, ROOT, finished, run

EXAMPLES = ROOT / "bindings" / "python" / "examples"


def start(script, *arguments):
    return run(EXAMPLES / script, *arguments)


def test_monitor(simulator):
    with z.Client(port=simulator.port) as client:
        client.login("demo@example.com", "demo")
        client.connect(z.ConnectMethod.CLOSEST)
    process = start("monitor.py", simulator.port)
    lines = [process.stdout.readline() for _ in range(8)]
    simulator.stop()
    for line in process.stdout:
        if line.startswith("The daemon is"):
            break
    process.send_signal(signal.SIGINT)
    status, _, err = finished(process)
    assert (status, err) == (0, "")
    assert all(re.fullmatch(r"\w+ +\d+\.\d\d Mbit/s down +\d+\.\d\d Mbit/s up\n", each) for each in lines)
    assert line in ("The daemon is quiet\n", "The daemon is unreachable\n")


def test_limits(simulator):
    assert finished(start("limits.py", "--port", simulator.port)) == (0, "", "")
    with z.Client(port=simulator.port) as client:
        client.set_adapter_monthly_data_limit("eth0", 100 * 10**9, 1)
        assert finished(start("limits.py", "--port", simulator.port)) == (
            1, "Ethernet (eth0) has used 96.25 of 100.00 GB\n", "")
        assert finished(start("limits.py", "--port", simulator.port, "--percent", "97")) == (0, "", "")
    simulator.stop()
    assert finished(start("limits.py", "--port", simulator.port)) == (2, "", "zephlink: Unable to connect\n")


def test_the_page(simulator, monkeypatch):
    page = (ROOT / "docs" / "python.md").read_text()
    scripts = re.findall(r"^```python\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)
    assert scripts == [(EXAMPLES / name).read_text() for name in ("monitor.py", "limits.py")]

    (session,) = re.findall(r"^```pycon\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)
    monkeypatch.setattr(z, "Client", lambda client=z.Client: client(port=simulator.port))
    test = doctest.DocTestParser().get_doctest(session, {}, "docs/python.md", None, 0)
    assert doctest.DocTestRunner().run(test) == (0, len(test.examples)) and len(test.examples) == 7


def test_bench():
    process = run(ROOT / "bench" / "python_bench.py", "--build", BUILD, "--events", "200")
    status, out, err = finished(process, 60)
    assert (status, err) == (0, "") and out.count("times") == 3

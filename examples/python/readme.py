"""Presses a specimen of the demo frame to 50 kN: readme.py [DATABASE]"""
import sys

import zuma

with zuma.open(sys.argv[1] if sys.argv[1:] else zuma.demo(), frame=1, sim=True) as frame:
    force, valve = frame.sensors["Force"], frame.commands["Servovalve"]
    frame.watchdog.enabled = True
    frame.outputs["Pompe"].on()
    frame.outputs["Distributeur"].on()
    frame.run(seconds=2)  # pressure builds up
    valve.enabled = True
    valve.set(10, "%")
    data = frame.record(seconds=60, until=lambda: force.value >= 50)
    print(f"{force.value:.1f} {force.unit} after {frame.time:.1f} s, {len(data)} rows")

#!/usr/bin/env python3
"""Fails when driver/ differs from what scripts/gen_driver.py writes from its model table."""

import os
import subprocess
import sys

here = os.path.dirname(os.path.abspath(__file__))
sys.exit(subprocess.call([sys.executable, os.path.join(here, "gen_driver.py"), "--check"]))

#!/usr/bin/env bash
# Prints COUNT (default 200) lines of the kind the suite's programs hand the
# message window: drivers, pumps, valves, alarms and operator actions.
set -euo pipefail
count="${1:-200}"

pumps=(P-101 P-102 P-205 P-310)
valves=(V-7 V-12 V-31 CV-8 XV-402)
points=(TI-204 PI-118 FIC-410 TI-207 PDI-15)
tanks=(T-1 T-2 T-14)
drivers=("MODBUS-TCP 10.0.4.21" "OPC-DA Kepware.1" "S7-300 CPU315" "DNP3 RTU-07" "Profibus DP slave 12")
operators=(chen.li m.weber j.ortiz operator2)

for ((i = 1; i <= count; i++)); do
  pump="${pumps[RANDOM % ${#pumps[@]}]}"
  valve="${valves[RANDOM % ${#valves[@]}]}"
  point="${points[RANDOM % ${#points[@]}]}"
  case $((RANDOM % 10)) in
    0) echo "Pump $pump started, speed setpoint $((900 + RANDOM % 600)) rpm" ;;
    1) echo "Pump $pump stopped by interlock ESD-$((1 + RANDOM % 4))" ;;
    2) echo "Valve $valve opened to $((RANDOM % 101))%" ;;
    3) echo "Valve $valve closed (travel time $((2 + RANDOM % 9)).$((RANDOM % 10)) s)" ;;
    4) echo "Alarm HI $point = $((80 + RANDOM % 40)).$((RANDOM % 10)) degC, limit 85.0" ;;
    5) echo "Alarm $point returned to normal" ;;
    6) echo "Driver ${drivers[RANDOM % ${#drivers[@]}]}: communication lost, retry $((1 + RANDOM % 5))" ;;
    7) echo "Driver ${drivers[RANDOM % ${#drivers[@]}]}: communication restored" ;;
    8) echo "Operator ${operators[RANDOM % ${#operators[@]}]} acknowledged alarm on $point" ;;
    9) echo "Tank ${tanks[RANDOM % ${#tanks[@]}]} level at $((RANDOM % 100)).$((RANDOM % 10))%, trend rising" ;;
  esac
done

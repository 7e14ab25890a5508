# Time a node against the number of nodes, a line for each library.
# gnuplot -e "data='load.dat'; output_file='load.svg'; name='load'" scale.gp

set terminal svg size 800,480 font "sans,13" background "white"
set output output_file
set title name noenhanced
set datafile missing "?"
set logscale xy
set xrange [800:1250000]
set format x "10^{%T}"
set xlabel "nodes"
set ylabel "ns a node"
set grid
set key outside right noenhanced
stats data skip 1 nooutput
plot for [column = 2:STATS_columns] data using 1:column \
  title columnheader(column) with linespoints linewidth 2 pointtype 7 pointsize 0.5

# The ratios of each operation, a group of bars for each.
# gnuplot -e "data='ratios.dat'; output_file='ratios.svg'" ratios.gp

set terminal svg size 1100,560 font "sans,13" background "white"
set output output_file
set title "in multiples of the library in brackets, geometric means over the small documents"
set datafile missing "?"
set logscale y
set grid ytics
set style data histogram
set style histogram clustered gap 2
set style fill solid 0.8 noborder
set xtics rotate by -40 noenhanced
set key outside right noenhanced
stats data skip 1 using 2 nooutput
plot for [column = 2:8] data using column:xticlabels(1) title columnheader(column)

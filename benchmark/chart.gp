# Draws the ratios of a benchmark run: a bar from 1, the time of the JDK's binding, to the left where Zerlin is faster
# and to the right where it is slower. Called by ./bench --chart with the variables ratios, svg and name.
set terminal svg size 860,400 noenhanced font "sans-serif,13" background rgb "white"
set output svg
set datafile separator "\t"
set label "Time of one call beside the PKCS#11 binding inside the JDK (" . name . ")" at screen 0.5, 0.95 center
set xlabel "Zerlin / JDK: less than 1 is faster"
set tmargin 4
set logscale x 2
set xrange [0.08:4]
set xtics nomirror ("1/8" 0.125, "1/4" 0.25, "1/2" 0.5, "1" 1, "2" 2, "4" 4)
set yrange [10.7:-0.7]
set ytics scale 0
set grid xtics linecolor rgb "#dddddd"
set border 1
unset key
set style fill solid noborder
set arrow from 1, graph 0 to 1, graph 1 nohead front linecolor rgb "#444444"
faster(x) = x < 1 ? 0x2f7d5b : 0xc9772b
plot ratios using 1:0:(1):1:($0 - 0.35):($0 + 0.35):(faster($1)):ytic(2) with boxxyerror linecolor rgb variable notitle, \
    '' using ($1 < 1 ? $1 * 0.96 : NaN):0:(sprintf("%.2f", $1)) with labels right font ",11" notitle, \
    '' using ($1 < 1 ? NaN : $1 * 1.04):0:(sprintf("%.2f", $1)) with labels left font ",11" notitle

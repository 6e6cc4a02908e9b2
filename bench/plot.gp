# Draws zrfbench.png from the zrfbench.tsv of the same directory: a panel for each table, the ratios of its
# peers by length.
data = "zrfbench.tsv"
rows = "tail -n +2 ".data
tableCount = int(system(rows." | cut -f 1 | uniq | wc -l"))

set datafile separator tab
set datafile missing NaN # rows of other tables and peers do not interrupt a line
set terminal pngcairo size 1200, 420 * tableCount
set output "zrfbench.png"
set multiplot layout tableCount, 1
set xlabel "length, or order"
set autoscale xfix
set offsets 1, 1, 0, 0
set xtics 4
set ylabel "peer's time / zrfgen's time"
set logscale y 2
set grid
set key outside right top
do for [number = 1:tableCount] {
    table = system(sprintf("%s | cut -f 1 | uniq | sed -n %dp", rows, number))
    peers = system(sprintf("%s | grep '^%s\t' | cut -f 3 | sort -u", rows, table))
    set title table.": above 1, the peer is slower"
    plot for [peer in peers] data every ::1 \
        using (strcol(1) eq table && strcol(3) eq peer ? $2 : NaN):6 with linespoints pt 7 title peer, \
        1 with lines lc "black" notitle
}

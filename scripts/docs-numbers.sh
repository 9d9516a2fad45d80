#!/usr/bin/env bash
# Checks that what the documents show of the program is what it prints:
#   scripts/docs-numbers.sh FOLDER [--write] [--trial] [PAGE...]
# FOLDER is where the programs were built; the pages are README.md and those of docs/. With --write the blocks of output
# are brought up to date. A mark stands on the line before what it is about:
#   <!-- file: NAME -->         the fenced block below is the file NAME, written before anything else
#   <!-- do -->                 the fenced block below is run
#   <!-- trial -->              the same with --trial, which says that GNU parallel and Slurm are there (slurm-trial.sh)
#   <!-- prints -->             the fenced block below is what the block that was run last printed
#   <!-- run: COMMAND -->       the fenced block below is what COMMAND prints; a line "..." stands for what is left out
#   <!-- numbers: COMMAND -->   each number of the paragraph below is one that COMMAND prints, as far as it is written
# Each page has a fresh folder of its own, with the examples, and with their data as "data".
set -euo pipefail
programs=$(cd "$1" && pwd)
shift
cd "$(dirname "$0")/.."
export LC_ALL=C QUORVEX_SETTINGS=/dev/null QT_QPA_PLATFORM=offscreen PATH="$programs:$PATH"
unset DISPLAY WAYLAND_DISPLAY

exec perl - "$@" <<'PERL'
use strict;
use warnings;
use Cwd;
use File::Temp;

my $write = @ARGV && $ARGV[0] eq '--write' ? shift @ARGV : '';
my $trial = @ARGV && $ARGV[0] eq '--trial' ? shift @ARGV : '';
my @pages = @ARGV ? @ARGV : ('README.md', glob('docs/*.md docs/manual/*.html'));
my $root = getcwd();
my ($checked, $failed) = (0, 0);

sub output_of {  # of a command: its lines, and whether it came to its end
  my ($command) = @_;
  open(my $pipe, '-|', 'bash', '-c', "set -eo pipefail\n$command") or die "bash: $!";
  my @lines = <$pipe>;
  my $well = close $pipe;
  for (@lines) { s/[\r\n]+$//; s/\t/    /g; s/\s+$//; }
  return ($well, @lines);
}

sub comparable {  # a moment differs from run to run
  my ($line) = @_;
  $line =~ s/\d{4}-\d\d-\d\d \d\d:\d\d:\d\d/MOMENT/g;
  return $line;
}

# What the block would be: as many lines from the beginning and from the end as it shows.
sub shown {
  my ($block, @lines) = @_;
  my ($gap) = grep { $block->[$_] =~ /^\s*\.\.\.$/ } 0 .. $#$block;
  if (defined $gap) {
    my $behind = $#$block - $gap;
    return () if $gap + $behind > @lines;
    @lines = (@lines[0 .. $gap - 1], $block->[$gap], @lines[@lines - $behind .. $#lines]);
  }
  my ($moment) = map { /(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)/ } @$block;
  if (defined $moment) { s/\d{4}-\d\d-\d\d \d\d:\d\d:\d\d/$moment/ for @lines; }
  return @lines;
}

# Whether one of the numbers is this one, to the digits that it is written with.
sub is_printed {
  my ($number, @printed) = @_;
  my $digits = $number =~ /\.(\d+)/ ? length $1 : 0;
  my $unit = 10**-$digits * ($number =~ /[eE](-?\d+)/ ? 10**$1 : 1);
  return grep { abs($_ - $number) <= $unit * 0.5000001 } @printed;
}

for my $page (@pages) {
  open(my $file, '<', $page) or die "$page: $!";
  chomp(my @text = <$file>);
  close $file;
  my $folder = File::Temp->newdir();
  system("cp -r $root/examples/data $folder/data && ln -s $root/examples $folder/examples") == 0 or die;
  chdir $folder;
  for my $at (grep { $text[$_] =~ /^<!-- file: .* -->$/ } 0 .. $#text) {
    my ($name) = $text[$at] =~ /^<!-- file: (.*) -->$/;
    open(my $made, '>', $name) or die "$name: $!";
    for (my $line = $at + 2; $line < @text && $text[$line] !~ /^```/; ++$line) { print $made "$text[$line]\n"; }
    close $made;
  }
  my $changed = 0;
  my ($passed_over, @lines) = (0);  # of the block of commands before
  my $wrong = sub { $failed++; print STDERR "$page:$_[0]: $_[1]\n"; };
  for (my $at = 0; $at < @text; ++$at) {
    my ($mark, $what) = $text[$at] =~ /^<!-- (file|do|trial|prints|run|numbers)(?:: (.*))? -->$/ or next;
    $passed_over = $mark eq 'trial' && !$trial if $mark ne 'prints';
    next if $passed_over;
    ++$checked;
    my $line = $at + 1;
    if ($mark eq 'numbers') {
      my $paragraph = '';
      while (++$at < @text && $text[$at] ne '') { $paragraph .= " $text[$at]"; }
      $paragraph =~ s/\]\([^)]*\)|<[^>]*>//g;  # where links and pictures lead
      my ($well, @lines) = output_of($what);
      $wrong->($line, "'$what' failed") if !$well;
      my $pattern = qr/(?<![\w.])-?\d+(?:\.\d+)?(?:[eE][-+]?\d+)?(?![\w])/;
      my @printed = join("\n", @lines) =~ /$pattern/g;
      for my $number ($paragraph =~ /$pattern/g) {
        $wrong->($line, "the program prints no $number") if !is_printed($number, @printed);
      }
      next;
    }
    if ($text[$at + 1] !~ /^```/) { $wrong->($line, 'there is no block below'); next; }
    my $from = $at + 2;
    my $to = $from;
    while ($to < @text && $text[$to] !~ /^```/) { ++$to; }
    my @block = @text[$from .. $to - 1];
    $at = $to;
    next if $mark eq 'file';
    my $of_commands = $mark eq 'do' || $mark eq 'trial';
    if ($mark ne 'prints') {
      (my $well, @lines) = output_of($of_commands ? join("\n", @block) : $what);
      $wrong->($line, "the command failed") if !$well;
    }
    next if $of_commands;
    my @shown = shown(\@block, @lines);
    next if join("\n", map { comparable($_) } @shown) eq join("\n", map { comparable($_) } @block);
    if ($write && @shown) {
      splice(@text, $from, $to - $from, @shown);
      $at = $from + @shown;
      $changed = 1;
      next;
    }
    my ($first) = grep { $_ > $#shown || $_ > $#block || comparable($shown[$_]) ne comparable($block[$_]) }
      0 .. ($#shown > $#block ? $#shown : $#block);
    $wrong->($from + $first + 1, "not '" . ($block[$first] // '') . "' but '" . ($shown[$first] // '') . "'");
  }
  chdir $root;
  if ($changed) {
    open($file, '>', $page) or die "$page: $!";
    print $file map { "$_\n" } @text;
    close $file;
    print "$page is brought up to date\n";
  }
}
print "$checked marks checked, $failed wrong\n";
exit($failed || !$checked ? 1 : 0);
PERL

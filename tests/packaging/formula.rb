# Stands in for Homebrew: reads a formula, and runs its test with the programs in a folder. formula.rb FORMULA FOLDER
require "pathname"
require "tmpdir"

class Pathname
  def /(name) = self + name
  alias write_here write
  def write(text) = (dirname.mkpath; write_here(text))
end

class Formula
  TOLD = {}
  class << self
    %i[desc homepage url sha256 license].each { |name| define_method(name) { |value| TOLD[name] = value } }
    def depends_on(what) = (TOLD[:needs] ||= []) << what
    def test(&block) = TOLD[:test] = block
  end

  attr_reader :testpath, :bin

  def initialize(testpath, bin)
    @testpath = testpath
    @bin = bin
  end

  def system(*words) = Kernel.system(*words.map(&:to_s)) || raise("failed: #{words.join(" ")}")

  def assert_equal(wanted, found) = wanted == found || raise("#{found.inspect} instead of #{wanted.inspect}")
end

formula = File.realpath(ARGV[0])
bin = Pathname.new(File.realpath(ARGV[1]))
load formula
told = Formula::TOLD
missing = %i[desc homepage url sha256 license test].reject { |name| told.key?(name) }
raise "the formula lacks #{missing}" unless missing.empty?
raise "the description is longer than Homebrew takes" if told[:desc].length > 80
raise "the programs for Linux are all that there is" unless told[:needs].include?(:linux)
raise "there is nothing to install" unless Scrivo.method_defined?(:install)
Dir.mktmpdir do |folder|
  Dir.chdir(folder) { Scrivo.new(Pathname.new(folder), bin).instance_exec(&told[:test]) }
end

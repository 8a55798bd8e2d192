// The testbench of alu.v for simulators with DPI: once a cycle, when the clock falls, kval_cycle compares the outputs
// of alu with the model's and drives its inputs.
module tb (input bit clk);
    import "DPI-C" context function int kval_cycle(
        input longint now, input bit [39:0] result, input bit carry, input bit equal, input bit less,
        input bit [79:0] accumulator, output bit [3:0] op, output bit [2:0] ra, output bit [2:0] rb,
        output bit [2:0] rd, output bit write, output bit [5:0] shift, output logic [39:0] data);

    logic [3:0]  op;
    logic [2:0]  ra, rb, rd;
    logic        write;
    logic [5:0]  shift;
    logic [39:0] data, result;
    logic        carry, equal, less;
    logic [79:0] accumulator;

    alu alu (.*);

    always @(negedge clk) begin
        if (kval_cycle($time, result, carry, equal, less, accumulator, op, ra, rb, rd, write, shift, data) == 0)
            $finish;
    end
endmodule
